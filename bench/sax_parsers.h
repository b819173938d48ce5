/// \file
/// The parsers that are compared as SAX parsers. Each registers itself, so that one that isn't
/// installed is simply not there.
#ifndef QVOX_BENCH_SAX_PARSERS_H
#define QVOX_BENCH_SAX_PARSERS_H

#include <string>
#include <vector>

#include "document_builder.h"
#include "encodings.h"
#include "tally.h"

namespace bench {

/// One way to run a parser over a file, with handlers that count into a Tally and nothing else.
struct SaxParser {
    std::string name;
    /// How it is run, for the reader of the tables.
    std::string note;
    LengthUnit lengthUnit;
    bool declarationsAreAttributes;
    /// Whether it reads Shift_JIS, EUC-JP and ISO-2022-JP; UTF-8 and UTF-16 go without saying.
    bool readsJapaneseCodes;
    /// Raises std::runtime_error where the parser refuses the document.
    Tally (*parse)(const char* fileName);

    bool reads(Encoding encoding) const {
        return readsJapaneseCodes || encoding == Encoding::Utf8 || encoding == Encoding::Utf16;
    }

    /// What a parse of a document with these contents has to give.
    Tally expected(const Contents& contents) const {
        return contents.expected(lengthUnit, declarationsAreAttributes);
    }
};

/// All registered parsers, ours first.
const std::vector<SaxParser>& saxParsers();

/// Raises std::invalid_argument for an unknown name.
const SaxParser& saxParser(const std::string& name);

/// A static object of this type registers a parser.
class SaxParserRegistration {
public:
    explicit SaxParserRegistration(const SaxParser& parser);
};

}  // namespace bench

#endif
