#include "writer/indentation.h"

namespace qvox {

void Indentation::breakLine() {
    if (!wanted || takeTextMark()) return;
    sink.markup("\n");
    for (std::size_t i = 0; i < entries.size(); ++i) sink.markup("  ");
}

void Indentation::endLine() {
    if (wanted) sink.markup("\n");
}

void Indentation::open() {
    if (wanted) entries.push_back(OPEN);
}

void Indentation::close() {
    if (wanted) entries.pop_back();
}

void Indentation::markText() {
    if (!wanted) return;
    if (!entries.empty() && entries.back() == REFERENCE) entries.pop_back();
    entries.push_back(TEXT);
}

void Indentation::markReference() {
    if (!wanted) return;
    takeTextMark();
    entries.push_back(REFERENCE);
}

bool Indentation::takeTextMark() {
    if (entries.empty() || entries.back() == OPEN) return false;
    entries.pop_back();
    return true;
}

}  // namespace qvox
