#include "tree_source.h"

#include <vector>

#include "units.h"

namespace {

void append(Units& text, const char* ascii) {
    for (; *ascii != '\0'; ++ascii) text += static_cast<unsigned char>(*ascii);
}

void append_quoted(Units& text, const qvox::Xstring& value) {
    append(text, "\"");
    text += view_of(value);
    append(text, "\"");
}

// As the library writes it.
Units text_of(qvox::DocumentType& type) {
    Units text;
    append(text, "<!DOCTYPE ");
    text += view_of(type.getName());
    const qvox::Xstring& publicId = type.getPublicId();
    const qvox::Xstring& systemId = type.getSystemId();
    if (!publicId.isNull()) {
        append(text, " PUBLIC ");
        append_quoted(text, publicId);
    }
    if (!systemId.isNull()) {
        append(text, publicId.isNull() ? " SYSTEM " : " ");
        append_quoted(text, systemId);
    }
    append(text, " [");
    UnitView declarations = view_of(type.getInternalSubset());
    while (!declarations.empty() && declarations.back() == '\n') declarations.remove_suffix(1);
    text += declarations;
    append(text, "]>");
    return text;
}

class TreeSource {
public:
    TreeSource(const Literals& declaredLiterals, DocumentSink& destination)
        : literals(declaredLiterals), sink(destination) {}

    void open(qvox::Node& node);
    void close(qvox::Node& node) {
        if (node.getNodeType() == qvox::Node::ELEMENT_NODE)
            sink.endElement(view_of(node.getNodeName()));
    }

private:
    void startElement(qvox::Node& element);
    void processingInstruction(qvox::Node& instruction);

    const Literals& literals;
    DocumentSink& sink;
    bool isFirst = true;
    std::vector<Attribute> attributes;  // of the element in hand
};

void TreeSource::open(qvox::Node& node) {
    switch (node.getNodeType()) {
        case qvox::Node::ELEMENT_NODE: startElement(node); break;
        case qvox::Node::TEXT_NODE: sink.text(view_of(node.getNodeValue())); break;
        case qvox::Node::CDATA_SECTION_NODE:
            sink.startCdata();
            sink.text(view_of(node.getNodeValue()));
            sink.endCdata();
            break;
        case qvox::Node::COMMENT_NODE: sink.comment(view_of(node.getNodeValue())); break;
        case qvox::Node::PROCESSING_INSTRUCTION_NODE: processingInstruction(node); break;
        case qvox::Node::DOCUMENT_TYPE_NODE:
            sink.documentType(text_of(static_cast<qvox::DocumentType&>(node)), literals);
            break;
        default: break;  // the document itself; a parse makes no others
    }
    if (node.getNodeType() != qvox::Node::DOCUMENT_NODE) isFirst = false;
}

void TreeSource::startElement(qvox::Node& element) {
    attributes.clear();
    const qvox::NamedNodeMap* const map = element.getAttributes();
    const int length = map != nullptr ? map->getLength() : 0;
    for (int i = 0; i < length; ++i) {
        const auto& attribute = static_cast<const qvox::Attr&>(*map->item(i));
        attributes.push_back({view_of(attribute.getNodeName()), view_of(attribute.getNodeValue()),
                              !attribute.getSpecified()});
    }
    sink.startElement(view_of(element.getNodeName()), attributes);
}

// The XML declaration is one in a tree.
void TreeSource::processingInstruction(qvox::Node& instruction) {
    if (isFirst && instruction.getNodeName() == "xml") {
        return;
    }
    sink.processingInstruction(view_of(instruction.getNodeName()),
                               view_of(instruction.getNodeValue()));
}

// The children of a document type are no part of a written document.
qvox::Node* first_child(const qvox::Node& node) {
    return node.getNodeType() == qvox::Node::DOCUMENT_TYPE_NODE ? nullptr : node.getFirstChild();
}

}  // namespace

void pass_tree(qvox::Document& document, const Literals& literals, DocumentSink& sink) {
    TreeSource source(literals, sink);
    qvox::Node* node = &document;
    for (source.open(*node);; source.open(*node)) {
        if (qvox::Node* const child = first_child(*node)) {
            node = child;
            continue;
        }
        source.close(*node);
        while (node != &document && node->getNextSibling() == nullptr) {
            node = node->getParentNode();
            source.close(*node);
        }
        if (node == &document) return;
        node = node->getNextSibling();
    }
}
