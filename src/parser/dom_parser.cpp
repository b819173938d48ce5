#include <qvox/parser.h>

#include "dom/document.h"
#include "dom/dom_implementation.h"
#include "dom/node_list.h"
#include "dom/tree.h"
#include "runtime/report.h"
#include "text/temporaries.h"

namespace qvox {

DOMParser::DOMParser() { setFeature(FEATURE_NAMESPACE_PREFIXES, true); }

Document* DOMParser::parse(InputSource& source) {
    const OsTemp fileName(source.getSystemId().data());
    Document* document = nullptr;
    Parser::parse(fileName.get(), &source, nullptr, &document);
    return document;
}

Document* DOMParser::parse(const char* fileName) {
    InputSource source(fileName);
    Document* document = nullptr;
    Parser::parse(fileName, &source, nullptr, &document);
    return document;
}

Document* DOMParser::parse(unsigned short* text) {
    Document* document = nullptr;
    Parser::parse(nullptr, nullptr, text, &document);
    return document;
}

Document* DOMParser::createDocument() { return new DocumentImpl(&defaultImplementation); }

DOMImplementation* DOMParser::getImplementation() const { return &defaultImplementation; }

void DOMParser::free(Document* document) { Tree::destroy(document); }

void DOMParser::freeNode(Node* node) {
    if (node == nullptr) return;
    if (node->getParentNode() != nullptr) {
        qvox_report(REPORT_ERROR, QVOXException::FREE_ERR, "attempt to free node with parent");
    }
    Tree::destroy(node);
}

void DOMParser::free(NodeList* list) {
    if (const auto* results = dynamic_cast<ResultList*>(list)) {
        results->getDocument()->freeTmpNodeList(*results);
        return;
    }
    qvox_report(REPORT_ERROR, QVOXException::FREE_ERR,
                "attempt to free NodeList that is not tmp-node-list");
}

}  // namespace qvox
