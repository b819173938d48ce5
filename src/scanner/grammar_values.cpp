#include "scanner/grammar_values.h"

#include "runtime/heap.h"

namespace qvox {

Pieces no_pieces() {
    return {nullptr, nullptr};
}

Pieces piece(const Unit* text) {
    auto* single = halloc_record<Pieces::Piece>(parseHeap);
    single->text = text;
    return {single, single};
}

Pieces piece(char symbol) {
    Unit* text = halloc_text(parseHeap, 1);
    text[0] = static_cast<Unit>(symbol);
    text[1] = 0;
    return piece(text);
}

Pieces join(std::initializer_list<Pieces> parts) {
    Pieces joined = no_pieces();
    for (const Pieces& part : parts) {
        if (part.first == nullptr) continue;
        if (joined.first == nullptr) {
            joined = part;
        } else {
            joined.last->next = part.first;
            joined.last = part.last;
        }
    }
    return joined;
}

Unit* flatten(const Pieces& pieces) {
    std::size_t length = 0;
    for (auto* p = pieces.first; p != nullptr; p = p->next) length += wide_length(p->text);
    Unit* text = halloc_text(parseHeap, length);
    Unit* end = text;
    for (auto* p = pieces.first; p != nullptr; p = p->next) {
        wide_copy(end, p->text);
        end += wide_length(p->text);
    }
    *end = 0;
    return text;
}

Unit* concat_strings(std::initializer_list<const Unit*> texts) {
    Pieces pieces = no_pieces();
    for (const Unit* text : texts) pieces = join({pieces, piece(text)});
    return flatten(pieces);
}

}  // namespace qvox
