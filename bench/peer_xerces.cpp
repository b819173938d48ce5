#include <stdexcept>
#include <string>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/LocalFileFormatTarget.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "tree_libraries.h"
#include "tree_walk.h"

namespace bench {
namespace {

namespace xc = xercesc;

/// Brings the library up at the first use, down at the end of the program.
class Platform {
public:
    static void need() { static const Platform platform; }

    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;

private:
    Platform() { xc::XMLPlatformUtils::Initialize(); }
    ~Platform() { xc::XMLPlatformUtils::Terminate(); }
};

struct Links {
    static xc::DOMNode* firstChild(const xc::DOMNode* node) { return node->getFirstChild(); }
    static xc::DOMNode* nextSibling(const xc::DOMNode* node) { return node->getNextSibling(); }
    static xc::DOMNode* parent(const xc::DOMNode* node) { return node->getParentNode(); }
};

long valueLength(const xc::DOMNode* node) {
    return static_cast<long>(xc::XMLString::stringLen(node->getNodeValue()));
}

void add(const xc::DOMNode* node, Tally& tally) {
    switch (node->getNodeType()) {
        case xc::DOMNode::ELEMENT_NODE: {
            ++tally.elements;
            const xc::DOMNamedNodeMap* const attributes = node->getAttributes();
            const XMLSize_t attributeCount = attributes->getLength();
            tally.attributes += static_cast<long>(attributeCount);
            for (XMLSize_t i = 0; i < attributeCount; ++i) {
                tally.valueLength += valueLength(attributes->item(i));
            }
            break;
        }
        case xc::DOMNode::TEXT_NODE: tally.textLength += valueLength(node); break;
        default: break;
    }
}

Tally countAll(xc::DOMNode* root) {
    Tally tally;
    walkTree<Links>(root, [&tally](const xc::DOMNode* node) { add(node, tally); });
    return tally;
}

class XercesTree : public LoadedTree {
public:
    explicit XercesTree(const char* fileName) {
        parser.setDoNamespaces(true);
        parser.setValidationScheme(xc::XercesDOMParser::Val_Never);
        parser.setCreateEntityReferenceNodes(false);
        parser.parse(fileName);
        document = parser.getDocument();
        if (parser.getErrorCount() != 0 || document == nullptr) {
            throw std::runtime_error(std::string("Xerces-C++: cannot read ") + fileName);
        }
    }

    Tally count() override { return countAll(document); }

    long walk() override {
        return countElements<Links>(static_cast<xc::DOMNode*>(document),
                                    [](const xc::DOMNode* node) {
                                        return node->getNodeType() == xc::DOMNode::ELEMENT_NODE;
                                    });
    }

    // The result of a search is kept until the tree changes, so it is changed.
    long search() override {
        xc::DOMNode* const root = document->getDocumentElement();
        root->removeChild(root->appendChild(document->createTextNode(xc::XMLUni::fgZeroLenString)))
            ->release();
        const XMLCh all[] = {'*', 0};
        return static_cast<long>(document->getElementsByTagName(all)->getLength());
    }

    Tally clone(bool counted) override {
        xc::DOMNode* const copy = document->getDocumentElement()->cloneNode(true);
        const Tally tally = counted ? countAll(copy) : Tally();
        copy->release();
        return tally;
    }

    void save(const std::string& fileName) override {
        xc::DOMImplementation* const implementation =
            xc::DOMImplementationRegistry::getDOMImplementation(xc::XMLUni::fgZeroLenString);
        xc::DOMLSSerializer* const serializer = implementation->createLSSerializer();
        xc::DOMLSOutput* const output = implementation->createLSOutput();
        xc::LocalFileFormatTarget target(fileName.c_str());
        output->setByteStream(&target);
        const bool isWritten = serializer->write(document, output);
        output->release();
        serializer->release();
        if (!isWritten) throw std::runtime_error("Xerces-C++: cannot write " + fileName);
    }

private:
    xc::XercesDOMParser parser;  // owns the document
    xc::DOMDocument* document = nullptr;
};

std::unique_ptr<LoadedTree> load(const char* fileName) {
    Platform::need();
    return std::make_unique<XercesTree>(fileName);
}

const TreeLibraryRegistration registration(
    {"xerces", "Xerces-C++'s XercesDOMParser, with namespaces, without validation",
     LengthUnit::Unit16, true, true, load});

}  // namespace
}  // namespace bench
