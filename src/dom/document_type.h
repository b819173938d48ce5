#pragma once

#include <memory>

#include <qvox/dom.h>

#include "dom/declarations.h"
#include "dom/named_node_map.h"
#include "dom/node_list.h"
#include "platform/lock.h"

namespace qvox {

// Beside the maps of the standard it has all declarations in the order of reading. It has no
// document, also when it stands under one.
class DocumentTypeImpl final : public DocumentType {
public:
    DocumentTypeImpl(const Unit* typeName, const Unit* publicIdentifier,
                     const Unit* systemIdentifier, DOMImplementation* domImplementation);

    int getNodeType() const override { return DOCUMENT_TYPE_NODE; }
    const Xstring& getNodeName() const override { return name; }
    NamedNodeMap* getEntities() const override { return entities.get(); }
    const Xstring& getInternalSubset() override;
    const Xstring& getName() const override { return name; }
    NamedNodeMap* getNotations() const override { return notations.get(); }
    const Xstring& getPublicId() const override { return publicId; }
    const Xstring& getSystemId() const override { return systemId; }

    // The declarations are DeclNodes.
    NodeListImpl& getDeclarations() { return declarations; }
    DOMImplementation* getImplementation() const { return implementation; }

    // For reading; null where there are none.
    NamedNodeMapImpl* entityMap() { return entities.get(); }
    NamedNodeMapImpl* notationMap() { return notations.get(); }
    // For writing.
    NamedNodeMapImpl& ownEntityMap() { return made(entities); }
    NamedNodeMapImpl& ownNotationMap() { return made(notations); }

private:
    NamedNodeMapImpl& made(std::unique_ptr<NamedNodeMapImpl>& map);

    Xstring name;
    std::unique_ptr<NamedNodeMapImpl> entities;
    std::unique_ptr<NamedNodeMapImpl> notations;
    Xstring publicId;
    Xstring systemId;
    Lock subsetLock;         // for two threads that ask for the text at a time
    Xstring internalSubset;  // null until it is asked for
    NodeListImpl declarations;
    DOMImplementation* implementation;
};

}  // namespace qvox
