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
        Node* next = open(*node);
        while (next == nullptr) {
            if (node == root) return;
            next = Tree::nextSiblingNoLock(node);
            if (next == nullptr) next = close(node);
        }
        node = next;
    }
}

// Writes a node up to the first one inside it, which is returned; null where there is none.
Node* NodeWriter::open(Node& node) {
    switch (node.getNodeType()) {
        case Node::DOCUMENT_NODE:
        case Node::DOCUMENT_FRAGMENT_NODE: return Tree::firstChildOf(&node);
        case Node::ELEMENT_NODE: return startTag(static_cast<ElementImpl&>(node));
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
    return nullptr;
}

// Behind the last node inside another: puts that one in the place of `node` and writes what comes
// next of it. Returns the next node inside it; null where it is complete.
Node* NodeWriter::close(Node*& node) {
    if (Node* const parent = Tree::parentOf(node)) {
        node = parent;
        if (parent->getNodeType() == Node::ELEMENT_NODE) endTag(*parent);
        return nullptr;
    }
    const OpenTag tag = openTags.back();
    openTags.pop_back();
    node = tag.element;
    return restOfTag(*tag.element, tag.next);
}

Node* NodeWriter::startTag(ElementImpl& element) {
    indentation.breakLine();
    sink.markup("<");
    sink.text(element.getTagName());
    return restOfTag(element, element.firstAttribute());
}

// Writes the attributes from `item` on and ends the tag. Returns the first child. A caller can have
// put other nodes among the attributes: such a one is returned, to be written first.
Node* NodeWriter::restOfTag(ElementImpl& element, Node* item) {
    for (; item != nullptr; item = NodeLinks::next(item)) {
        if (item->getNodeType() != Node::ATTRIBUTE_NODE) {
            openTags.push_back({&element, NodeLinks::next(item)});
            return item;
        }
        attribute(*static_cast<const Attr*>(item));
    }
    Node* const child = Tree::firstChildOf(&element);
    sink.markup(child == nullptr ? "/>" : ">");
    if (child != nullptr) indentation.open();
    return child;
}

// Behind text it stays on the line.
void NodeWriter::endTag(const Node& element) {
    const bool isBehindText = indentation.takeTextMark();
    indentation.close();
    if (!isBehindText) indentation.breakLine();
    sink.markup("</");
    sink.text(element.getNodeName());
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
