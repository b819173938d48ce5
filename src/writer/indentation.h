// The line breaks and blanks that make a document readable on standard output. Everywhere else the
// output has no white space but that of the tree.
#pragma once

#include <vector>

#include "writer/output_sink.h"

namespace qvox {

class Indentation {
public:
    // None of the operations does anything unless it is wanted.
    Indentation(OutputSink& outputSink, bool isWanted) : sink(outputSink), wanted(isWanted) {}

    // Ahead of a piece of markup: a new line, with two blanks for each entry. Behind text it only
    // takes the mark of that away: such markup stays on its line.
    void breakLine();
    // A line break and no blanks.
    void endLine();

    // What stands between the two is one entry deeper.
    void open();
    void close();

    // Text has just been written. The mark is an entry of its own. A reference is a part of the
    // text around it and has one mark with it.
    void markText();
    void markReference();
    // Takes the mark of the text right in front away. Returns whether there was one.
    bool takeTextMark();

private:
    enum Entry : char { OPEN, TEXT, REFERENCE };

    OutputSink& sink;
    const bool wanted;
    std::vector<Entry> entries;
};

}  // namespace qvox
