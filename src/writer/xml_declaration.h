// What the XML declaration of a document says of the encoding. In a tree it is a processing
// instruction, whose data is text that the parser or the caller has put there.
#pragma once

#include <qvox/xstring.h>

#include "text/encoding_id.h"

namespace qvox {

// The encoding in which a document of that name is written, in any case of the letters: UTF-16,
// Shift_JIS or EUC-JP. Any other name gives Shift_JIS.
EncodingId encoding_id(const Xstring& name);

// The encoding in the data of a declaration: what stands between the first two quotes, of either
// kind, behind the word. The name is null where the declaration doesn't have it, which an empty
// name isn't.
struct DeclaredEncoding {
    Xstring name;
    int position = 0;  // of its first unit in the data
};
DeclaredEncoding declared_encoding(const Xstring& data);

// The data with another name in the place of the declared one, or at the end where there was none.
Xstring with_encoding(const Xstring& data, const DeclaredEncoding& declared, const Xstring& name);

}  // namespace qvox
