#include "scanner/grammar_values.h"

namespace qvox {

namespace {

template <typename Record>
const Record* on_heap(Heap& heap, const Record& values) {
    auto* record = heap.halloc_record<Record>();
    *record = values;
    return record;
}

}  // namespace

Pieces* GrammarValues::join(std::initializer_list<Part> parts) {
    Pieces* joined = nullptr;
    for (const Part& part : parts) {
        Pieces* pieces = pieces_of(part);
        if (pieces == nullptr) continue;
        if (joined == nullptr) {
            joined = pieces;
        } else {
            joined->last->next = pieces->first;
            joined->last = pieces->last;
        }
    }
    return joined;
}

Pieces* GrammarValues::pieces_of(const Part& part) {
    if (part.text != nullptr) return piece(part.text);
    if (part.symbol == 0) return part.pieces;
    const Unit symbol = static_cast<unsigned char>(part.symbol);
    return piece(heap.halloc_copy(&symbol, 1));
}

Pieces* GrammarValues::piece(const Unit* text) {
    auto* single = heap.halloc_record<Pieces::Piece>();
    single->text = text;
    auto* pieces = heap.halloc_record<Pieces>();
    pieces->first = single;
    pieces->last = single;
    return pieces;
}

Unit* GrammarValues::flatten(const Pieces* pieces) {
    const Pieces::Piece* first = pieces != nullptr ? pieces->first : nullptr;
    std::size_t length = 0;
    for (auto* p = first; p != nullptr; p = p->next) length += wide_length(p->text);
    Unit* text = heap.halloc_text(length);
    Unit* end = text;
    for (auto* p = first; p != nullptr; p = p->next) {
        wide_copy(end, p->text);
        end += wide_length(p->text);
    }
    *end = 0;
    return text;
}

const ExternalId* GrammarValues::external_id(const Unit* publicId, const Unit* systemId) {
    return on_heap(heap, ExternalId{publicId, systemId});
}

const DefaultDecl* GrammarValues::default_decl(const Unit* mode, const Unit* value) {
    return on_heap(heap, DefaultDecl{mode, value});
}

const ParameterEntityDef* GrammarValues::parameter_entity_def(const Unit* value,
                                                              const ExternalId* external) {
    return on_heap(heap, ParameterEntityDef{value, external});
}

}  // namespace qvox
