// The text of a document on its way out. It gathers in a block, which goes to the target when it is
// full: a piece of text costs a copy, not a call of the system.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include <qvox/xstring.h>

#include "text/wide.h"
#include "writer/output_target.h"

namespace qvox {

class OutputSink {
public:
    // What becomes of a line feed in a text. Those in markup stay as they are.
    enum LineFeeds { BARE, WITH_CR };

    OutputSink(OutputTarget& outputTarget, LineFeeds lineFeeds);
    OutputSink(const OutputSink&) = delete;
    OutputSink& operator=(const OutputSink&) = delete;

    // Each reports FILE_WRITE_ERR if a full block can't be written.
    void markup(std::string_view ascii);
    void text(const Xstring& text);
    // With references in the place of the five characters that XML predefines entities for.
    void escapedText(const Xstring& text);
    // One unit, such as a byte order mark.
    void unit(Unit one);

    // Hands over what has gathered. Without it the end of the text is lost, which is right behind a
    // failure.
    void flush();

private:
    static constexpr std::size_t BLOCK_SIZE = 16384;

    // The first of the units that has a replacement, or the end.
    using FindReplaced = const Unit* (*)(const Unit* next, const Unit* end);

    void put(const Xstring& text, FindReplaced find);
    std::size_t room();

    OutputTarget& target;
    const bool lineFeedsGetCr;
    std::size_t filled = 0;
    std::vector<Unit> block;
};

}  // namespace qvox
