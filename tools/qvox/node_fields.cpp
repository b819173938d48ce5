#include "node_fields.h"

namespace {

using Text = qvox::Xstring;

template <class Type, const Text& (Type::*getter)() const>
const Text& get(const qvox::Node& node) {
    return (static_cast<const Type&>(node).*getter)();
}

constexpr NodeField NAME = {"name", get<qvox::Node, &qvox::Node::getNodeName>};
constexpr NodeField NAMESPACE = {"namespaceURI", get<qvox::Node, &qvox::Node::getNamespaceURI>};
constexpr NodeField LOCAL_NAME = {"localName", get<qvox::Node, &qvox::Node::getLocalName>};
constexpr NodeField TARGET = {"target", get<qvox::Node, &qvox::Node::getNodeName>};
constexpr NodeField VALUE = {"value", get<qvox::Node, &qvox::Node::getNodeValue>};
constexpr NodeField DATA = {"data", get<qvox::Node, &qvox::Node::getNodeValue>};

template <class Type>
constexpr NodeField PUBLIC_ID = {"publicId", get<Type, &Type::getPublicId>};
template <class Type>
constexpr NodeField SYSTEM_ID = {"systemId", get<Type, &Type::getSystemId>};
constexpr NodeField NOTATION_NAME = {"notationName",
                                     get<qvox::Entity, &qvox::Entity::getNotationName>};

// By the numbers of the node types, which begin at 1.
constexpr NodeForm FORMS[] = {
    {"", {}},
    {"element", {NAME, NAMESPACE, LOCAL_NAME}},
    {"attribute", {NAME, NAMESPACE, LOCAL_NAME, VALUE}},
    {"text", {DATA}},
    {"cdataSection", {DATA}},
    {"entityReference", {NAME}},
    {"entity", {NAME, PUBLIC_ID<qvox::Entity>, SYSTEM_ID<qvox::Entity>, NOTATION_NAME}},
    {"processingInstruction", {TARGET, DATA}},
    {"comment", {DATA}},
    {"document", {}},
    {"documentType", {NAME, PUBLIC_ID<qvox::DocumentType>, SYSTEM_ID<qvox::DocumentType>}},
    {"documentFragment", {}},
    {"notation", {NAME, PUBLIC_ID<qvox::Notation>, SYSTEM_ID<qvox::Notation>}},
};

}  // namespace

const NodeForm& form_of(const qvox::Node& node) { return FORMS[node.getNodeType()]; }

bool is_defaulted(const qvox::Node& node) {
    return node.getNodeType() == qvox::Node::ATTRIBUTE_NODE &&
           !static_cast<const qvox::Attr&>(node).getSpecified();
}
