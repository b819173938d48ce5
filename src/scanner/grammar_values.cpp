#include "scanner/grammar_values.h"

#include "runtime/heap.h"

namespace qvox {

namespace {

template <typename Record>
const Record* on_heap(const Record& values) {
    auto* record = halloc_record<Record>(parseHeap);
    *record = values;
    return record;
}

}  // namespace

Pieces* piece(const Unit* text) {
    auto* single = halloc_record<Pieces::Piece>(parseHeap);
    single->text = text;
    auto* pieces = halloc_record<Pieces>(parseHeap);
    pieces->first = single;
    pieces->last = single;
    return pieces;
}

Pieces* piece(char symbol) {
    Unit* text = halloc_text(parseHeap, 1);
    text[0] = static_cast<unsigned char>(symbol);
    text[1] = 0;
    return piece(text);
}

Pieces* join(std::initializer_list<Pieces*> parts) {
    Pieces* joined = nullptr;
    for (Pieces* part : parts) {
        if (part == nullptr) continue;
        if (joined == nullptr) {
            joined = part;
        } else {
            joined->last->next = part->first;
            joined->last = part->last;
        }
    }
    return joined;
}

Unit* flatten(const Pieces* pieces) {
    const Pieces::Piece* first = pieces != nullptr ? pieces->first : nullptr;
    std::size_t length = 0;
    for (auto* p = first; p != nullptr; p = p->next) length += wide_length(p->text);
    Unit* text = halloc_text(parseHeap, length);
    Unit* end = text;
    for (auto* p = first; p != nullptr; p = p->next) {
        wide_copy(end, p->text);
        end += wide_length(p->text);
    }
    *end = 0;
    return text;
}

Unit* concat_strings(std::initializer_list<const Unit*> texts) {
    Pieces* pieces = nullptr;
    for (const Unit* text : texts) pieces = join({pieces, piece(text)});
    return flatten(pieces);
}

const ExternalId* external_id(const Unit* publicId, const Unit* systemId) {
    return on_heap(ExternalId{publicId, systemId});
}

const DefaultDecl* default_decl(const Unit* mode, const Unit* value) {
    return on_heap(DefaultDecl{mode, value});
}

const ParameterEntityDef* parameter_entity_def(const Unit* value, const ExternalId* external) {
    return on_heap(ParameterEntityDef{value, external});
}

}  // namespace qvox
