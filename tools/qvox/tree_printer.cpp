#include "tree_printer.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "escape.h"
#include "node_fields.h"
#include "utf8_source.h"

namespace {

using Text = qvox::Xstring;

class TreePrinter {
public:
    TreePrinter(Output& destination, unsigned short disguiseMark)
        : output(destination), mark(disguiseMark) {}

    // The node and what belongs to it, but for its children.
    void print(qvox::Node* node, std::size_t level);

private:
    void printLine(const qvox::Node& node, std::size_t level);
    void printMap(const qvox::NamedNodeMap* map, std::size_t level);
    void printDeclarations(const Text& declarations, std::size_t level);

    void begin(const char* type, std::size_t level);
    void end();

    Output& output;
    const unsigned short mark;
    Units buffer;
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
    const NodeForm& form = form_of(node);
    begin(form.type, level);
    for (const NodeField& field : form.fields) {
        if (field.name == nullptr) break;
        line += ' ';
        line += field.name;
        line += '=';
        const Text& text = field.get(node);
        const UnitView plain = without_disguise(view_of(text), mark, buffer);
        if (plain.data() == text.data()) {
            quote(line, text);
        } else {
            quote(line, Text(plain.data(), static_cast<int>(plain.size())));
        }
    }
    if (is_defaulted(node)) line += " defaulted";
    end();
}

void TreePrinter::printMap(const qvox::NamedNodeMap* map, std::size_t level) {
    if (map == nullptr) return;
    for (int i = 0; i < map->getLength(); ++i) printLine(*map->item(i), level);
}

void TreePrinter::printDeclarations(const Text& declarations, std::size_t level) {
    const UnitView plain = without_disguise(view_of(declarations), mark, buffer);
    const unsigned short* unit = plain.data();
    const unsigned short* const behind = unit + plain.size();
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

void print_tree(qvox::Node* root, Output& output, unsigned short mark) {
    TreePrinter printer(output, mark);
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
