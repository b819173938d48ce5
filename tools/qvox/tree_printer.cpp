#include "tree_printer.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "escape.h"

namespace {

using Text = qvox::Xstring;

struct Field {
    const char* name = nullptr;
    const Text& (*get)(const qvox::Node& node) = nullptr;
};

template <class Type, const Text& (Type::*getter)() const>
const Text& get(const qvox::Node& node) {
    return (static_cast<const Type&>(node).*getter)();
}

constexpr std::size_t MOST_FIELDS = 4;

struct Form {
    const char* type;
    Field fields[MOST_FIELDS];
};

constexpr Field NAME = {"name", get<qvox::Node, &qvox::Node::getNodeName>};
constexpr Field NAMESPACE = {"namespaceURI", get<qvox::Node, &qvox::Node::getNamespaceURI>};
constexpr Field LOCAL_NAME = {"localName", get<qvox::Node, &qvox::Node::getLocalName>};
constexpr Field TARGET = {"target", get<qvox::Node, &qvox::Node::getNodeName>};
constexpr Field VALUE = {"value", get<qvox::Node, &qvox::Node::getNodeValue>};
constexpr Field DATA = {"data", get<qvox::Node, &qvox::Node::getNodeValue>};

template <class Type>
constexpr Field PUBLIC_ID = {"publicId", get<Type, &Type::getPublicId>};
template <class Type>
constexpr Field SYSTEM_ID = {"systemId", get<Type, &Type::getSystemId>};
constexpr Field NOTATION_NAME = {"notationName", get<qvox::Entity, &qvox::Entity::getNotationName>};

// By the numbers of the node types, which begin at 1.
constexpr Form FORMS[] = {
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

class TreePrinter {
public:
    explicit TreePrinter(Output& destination) : output(destination) {}

    // The node and what belongs to it, but for its children.
    void print(qvox::Node* node, std::size_t level);

private:
    void printLine(const qvox::Node& node, std::size_t level);
    void printMap(const qvox::NamedNodeMap* map, std::size_t level);
    void printDeclarations(const Text& declarations, std::size_t level);

    void begin(const char* type, std::size_t level);
    void end();

    Output& output;
    std::string line;  // in the making
};

void TreePrinter::print(qvox::Node* node, std::size_t level) {
    printLine(*node, level);
    printMap(node->getAttributes(), level + 1);
    if (node->getNodeType() != qvox::Node::DOCUMENT_TYPE_NODE) return;
    auto* documentType = static_cast<qvox::DocumentType*>(node);
    printMap(documentType->getEntities(), level + 1);
    printMap(documentType->getNotations(), level + 1);
    printDeclarations(documentType->getInternalSubset(), level + 1);
}

void TreePrinter::printLine(const qvox::Node& node, std::size_t level) {
    const Form& form = FORMS[node.getNodeType()];
    begin(form.type, level);
    for (const Field& field : form.fields) {
        if (field.name == nullptr) break;
        line += ' ';
        line += field.name;
        line += '=';
        quote(line, field.get(node));
    }
    if (node.getNodeType() == qvox::Node::ATTRIBUTE_NODE &&
        !static_cast<const qvox::Attr&>(node).getSpecified()) {
        line += " defaulted";
    }
    end();
}

void TreePrinter::printMap(const qvox::NamedNodeMap* map, std::size_t level) {
    if (map == nullptr) return;
    for (int i = 0; i < map->getLength(); ++i) printLine(*map->item(i), level);
}

void TreePrinter::printDeclarations(const Text& declarations, std::size_t level) {
    const unsigned short* unit = declarations.data();
    const unsigned short* const behind = unit + declarations.length();
    while (unit != behind) {
        const unsigned short* const lineEnd = std::find(unit, behind, '\n');
        begin("declarations", level);
        line += " text=\"";
        escape_units(line, unit, static_cast<int>(lineEnd - unit), Style::QUOTED);
        line += '"';
        end();
        unit = lineEnd == behind ? behind : lineEnd + 1;
    }
}

void TreePrinter::begin(const char* type, std::size_t level) {
    line.assign(2 * std::min(level, DEEPEST_INDENT), ' ');
    if (level > DEEPEST_INDENT) line += '(' + std::to_string(level) + ") ";
    line += type;
}

void TreePrinter::end() {
    line += '\n';
    output.write(line);
}

}  // namespace

void print_tree(qvox::Node* root, Output& output) {
    TreePrinter printer(output);
    qvox::Node* node = root;
    for (std::size_t level = 0;;) {
        printer.print(node, level);
        if (qvox::Node* const child = node->getFirstChild()) {
            node = child;
            ++level;
            continue;
        }
        while (node != root && node->getNextSibling() == nullptr) {
            node = node->getParentNode();
            --level;
        }
        if (node == root) return;
        node = node->getNextSibling();
    }
}
