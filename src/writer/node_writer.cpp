#include "writer/node_writer.h"

#include "dom/tree.h"
#include "writer/declaration_writer.h"

namespace qvox {

void NodeWriter::replaceData(const ProcessingInstruction* instruction, const Xstring& data) {
    replaced = instruction;
    replacement = &data;
}

void NodeWriter::write(Node* root) {
    Node* node = root;
    for (;;) {
        Node* next = open(*node) ? Tree::firstChildOf(node) : nullptr;
        while (next == nullptr && node != root) {
            next = Tree::nextSiblingNoLock(node);
            if (next != nullptr) break;
            node = Tree::parentOf(node);
            close(*node);
        }
        if (next == nullptr) return;
        node = next;
    }
}

// Writes a node up to its children. Returns whether these are written too.
bool NodeWriter::open(Node& node) {
    switch (node.getNodeType()) {
        case Node::DOCUMENT_NODE:
        case Node::DOCUMENT_FRAGMENT_NODE: return true;
        case Node::ELEMENT_NODE: startTag(static_cast<ElementImpl&>(node)); return true;
        case Node::ATTRIBUTE_NODE: attribute(static_cast<Attr&>(node)); break;
        case Node::TEXT_NODE: textNode(static_cast<CharacterData&>(node)); break;
        case Node::ENTITY_REFERENCE_NODE: reference(node); break;
        case Node::PROCESSING_INSTRUCTION_NODE:
            instruction(static_cast<ProcessingInstruction&>(node));
            break;
        case Node::CDATA_SECTION_NODE: enclosed("<![CDATA[", node.getNodeValue(), "]]>"); break;
        case Node::COMMENT_NODE: enclosed("<!--", node.getNodeValue(), "-->"); break;
        case Node::ENTITY_NODE: declared("<!ENTITY ", static_cast<Entity&>(node)); break;
        case Node::NOTATION_NODE: declared("<!NOTATION ", static_cast<Notation&>(node)); break;
        case Node::DOCUMENT_TYPE_NODE:
            write_document_type(static_cast<DocumentTypeImpl&>(node), sink, indentation);
            break;
        default: break;
    }
    return false;
}

// Writes what comes behind the children.
void NodeWriter::close(const Node& node) {
    if (node.getNodeType() == Node::ELEMENT_NODE) endTag(static_cast<const ElementImpl&>(node));
}

void NodeWriter::startTag(const ElementImpl& element) {
    indentation.breakLine();
    sink.markup("<");
    sink.text(element.getTagName());
    const NamedNodeMapImpl& attributes = element.attributeMap();
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        attribute(*static_cast<const Attr*>(attributes.at(i)));
    }
    if (Tree::firstChildOf(&element) == nullptr) {
        sink.markup("/>");
        return;
    }
    sink.markup(">");
    indentation.open();
}

// Behind text it stays on the line.
void NodeWriter::endTag(const ElementImpl& element) {
    const bool isBehindText = indentation.takeTextMark();
    indentation.close();
    if (!isBehindText) indentation.breakLine();
    sink.markup("</");
    sink.text(element.getTagName());
    sink.markup(">");
}

void NodeWriter::attribute(const Attr& attr) {
    sink.markup(" ");
    sink.text(attr.getName());
    sink.markup("=\"");
    sink.escapedText(attr.getValue());
    sink.markup("\"");
}

void NodeWriter::textNode(const CharacterData& text) {
    indentation.markText();
    sink.escapedText(text.getData());
}

void NodeWriter::reference(const Node& node) {
    indentation.markReference();
    sink.markup("&");
    sink.text(node.getNodeName());
    sink.markup(";");
}

// The blank stands there without data too.
void NodeWriter::instruction(const ProcessingInstruction& node) {
    indentation.breakLine();
    sink.markup("<?");
    sink.text(node.getTarget());
    sink.markup(" ");
    sink.text(&node == replaced ? *replacement : node.getData());
    sink.markup("?>");
}

void NodeWriter::enclosed(const char* start, const Xstring& text, const char* end) {
    indentation.breakLine();
    sink.markup(start);
    sink.text(text);
    sink.markup(end);
}

template <class Declared>
void NodeWriter::declared(const char* start, const Declared& node) {
    indentation.breakLine();
    sink.markup(start);
    sink.text(node.getNodeName());
    write_external_id(node.getPublicId(), node.getSystemId(), sink);
    sink.markup(">");
}

}  // namespace qvox
