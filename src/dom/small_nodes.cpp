#include "dom/small_nodes.h"

#include "dom/tree.h"

namespace qvox {

namespace {

const Xstring& unless_empty(const Xstring& text) {
    return text.length() > 0 ? text : Xstring::Null;
}

}  // namespace

EntityReferenceImpl::EntityReferenceImpl(const Unit* entityName, Document* document)
    : EntityReference(document) {
    name = entityName;
}

EntityImpl::EntityImpl(const Unit* entityName, const Unit* publicIdentifier,
                       const Unit* systemIdentifier, const Unit* notation, Document* document)
    : Entity(document) {
    name = entityName;
    notationName = notation;
    publicId = publicIdentifier;
    systemId = systemIdentifier;
}

NotationImpl::NotationImpl(const Unit* notationName, const Unit* publicIdentifier,
                           const Unit* systemIdentifier, Document* document)
    : Notation(document) {
    name = notationName;
    publicId = publicIdentifier;
    systemId = systemIdentifier;
}

const Xstring& NotationImpl::getPublicId() const { return unless_empty(publicId); }

const Xstring& NotationImpl::getSystemId() const { return unless_empty(systemId); }

ProcessingInstructionImpl::ProcessingInstructionImpl(const Unit* targetName, const Unit* text,
                                                     Document* document)
    : ProcessingInstruction(document) {
    target = targetName;
    data = text;
}

void ProcessingInstructionImpl::setData(const Xstring& text) {
    Tree::touch(this);
    data = text;
}

}  // namespace qvox
