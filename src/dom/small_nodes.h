// The node types with little behaviour of their own. Null texts are absent and stay null.
#pragma once

#include <qvox/dom.h>

#include "dom/node_memory.h"
#include "text/lent_text.h"
#include "text/wide.h"

namespace qvox {

class DocumentFragmentImpl final : public DocumentFragment {
public:
    explicit DocumentFragmentImpl(Document* document) : DocumentFragment(document) {}

    int getNodeType() const override { return DOCUMENT_FRAGMENT_NODE; }
};

class EntityReferenceImpl final : public EntityReference {
public:
    EntityReferenceImpl(const Unit* entityName, Document* document);

    int getNodeType() const override { return ENTITY_REFERENCE_NODE; }
    const Xstring& getNodeName() const override { return name; }

private:
    Xstring name;
};

class EntityImpl final : public Entity {
public:
    EntityImpl(const Unit* entityName, const Unit* publicIdentifier, const Unit* systemIdentifier,
               const Unit* notation, Document* document);

    int getNodeType() const override { return ENTITY_NODE; }
    const Xstring& getNodeName() const override { return name; }
    const Xstring& getNotationName() const override { return notationName; }
    const Xstring& getPublicId() const override { return publicId; }
    const Xstring& getSystemId() const override { return systemId; }

private:
    Xstring name;
    Xstring notationName;
    Xstring publicId;
    Xstring systemId;
};

class NotationImpl final : public Notation {
public:
    NotationImpl(const Unit* notationName, const Unit* publicIdentifier,
                 const Unit* systemIdentifier, Document* document);

    int getNodeType() const override { return NOTATION_NODE; }
    const Xstring& getNodeName() const override { return name; }
    // An empty identifier reads as absent.
    const Xstring& getPublicId() const override;
    const Xstring& getSystemId() const override;

private:
    Xstring name;
    Xstring publicId;
    Xstring systemId;
};

class ProcessingInstructionImpl final : public ProcessingInstruction {
public:
    ProcessingInstructionImpl(const Unit* targetName, const Unit* text, Document* document);
    // With texts that lie with the node.
    ProcessingInstructionImpl(const LentText& targetName, const LentText& text,
                              const NodeHome& home) noexcept
        : ProcessingInstruction(home), target(targetName.string()), data(text.string()) {}

    int getNodeType() const override { return PROCESSING_INSTRUCTION_NODE; }
    const Xstring& getNodeName() const override { return target; }
    const Xstring& getNodeValue() const override { return data; }
    void setNodeValue(const Xstring& nodeValue) override { setData(nodeValue); }
    const Xstring& getData() const override { return data; }
    const Xstring& getTarget() const override { return target; }
    void setData(const Xstring& text) override;

private:
    Xstring target;
    Xstring data;
};

}  // namespace qvox
