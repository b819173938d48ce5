// Nodes as markup, each kind in its form, to any depth of the tree.
#pragma once

#include <cstddef>
#include <vector>

#include "dom/element.h"
#include "writer/indentation.h"
#include "writer/output_sink.h"

namespace qvox {

class NodeWriter {
public:
    NodeWriter(OutputSink& outputSink, bool isIndented)
        : sink(outputSink), indentation(outputSink, isIndented) {}

    // Has an instruction written with this data instead of its own. Both must outlive the writing.
    void replaceData(const ProcessingInstruction* instruction, const Xstring& data);

    // Writes the node and what hangs from it.
    void write(Node* root);

    // Ends an indented document.
    void endLine() { indentation.endLine(); }

private:
    // A start tag in which an item is being written that is no attribute.
    struct OpenTag {
        ElementImpl* element;
        Node* next;  // among the attributes
    };

    Node* open(Node& node);
    Node* close(Node*& node);

    Node* startTag(ElementImpl& element);
    Node* restOfTag(ElementImpl& element, Node* item);
    void endTag(const Node& element);
    void attribute(const Attr& attr);
    void textNode(const CharacterData& text);
    void reference(const Node& node);
    void instruction(const ProcessingInstruction& node);
    void enclosed(const char* start, const Xstring& text, const char* end);
    template <class Declared>
    void declared(const char* start, const Declared& node);

    OutputSink& sink;
    Indentation indentation;
    const ProcessingInstruction* replaced = nullptr;
    const Xstring* replacement = nullptr;
    std::vector<OpenTag> openTags;  // the innermost one at the end
};

}  // namespace qvox
