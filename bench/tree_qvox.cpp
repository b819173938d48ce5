#include <stdexcept>

#include <qvox/qvox.h>

#include "tree_libraries.h"
#include "tree_walk.h"

namespace bench {
namespace {

struct Links {
    static qvox::Node* firstChild(const qvox::Node* node) { return node->getFirstChild(); }
    static qvox::Node* nextSibling(const qvox::Node* node) { return node->getNextSibling(); }
    static qvox::Node* parent(const qvox::Node* node) { return node->getParentNode(); }
};

void add(const qvox::Node* node, Tally& tally) {
    switch (node->getNodeType()) {
        case qvox::Node::ELEMENT_NODE: {
            ++tally.elements;
            const qvox::NamedNodeMap* const attributes = node->getAttributes();
            const int attributeCount = attributes->getLength();
            tally.attributes += attributeCount;
            for (int i = 0; i < attributeCount; ++i) {
                tally.valueLength += attributes->item(i)->getNodeValue().length();
            }
            break;
        }
        case qvox::Node::TEXT_NODE: tally.textLength += node->getNodeValue().length(); break;
        default: break;
    }
}

Tally countAll(qvox::Node* root) {
    Tally tally;
    walkTree<Links>(root, [&tally](const qvox::Node* node) { add(node, tally); });
    return tally;
}

class QvoxTree : public LoadedTree {
public:
    explicit QvoxTree(const Source& source) {
        parser.setFeature(qvox::FEATURE_CONCURRENT, true);
        document = parser.parse(source.fileName.c_str());
    }
    ~QvoxTree() override { parser.free(document); }

    Tally count() override { return countAll(document); }

    long walk() override {
        return countElements<Links>(static_cast<qvox::Node*>(document), [](const qvox::Node* node) {
            return node->getNodeType() == qvox::Node::ELEMENT_NODE;
        });
    }

    long search(const std::string& name) override {
        qvox::NodeList* const found = document->getElementsByTagName(name.c_str());
        const int length = found->getLength();
        parser.free(found);
        return length;
    }

    Tally clone(bool counted) override {
        qvox::Node* const copy = document->getDocumentElement()->cloneNode(true);
        const Tally tally = counted ? countAll(copy) : Tally();
        parser.freeNode(copy);
        return tally;
    }

    /// In the encoding of the declaration; of UTF-8 and ISO-2022-JP, which aren't written, in
    /// Shift_JIS.
    void save(const std::string& fileName) override {
        const qvox::Xstring& declaration = document->getFirstChild()->getNodeValue();
        const auto declares = [&declaration](const char* name) {
            return declaration.find(name) < static_cast<unsigned>(declaration.length());
        };
        if (declares("UTF-16") || declares("Shift_JIS") || declares("EUC-JP")) {
            parser.write(document, fileName.c_str());
        } else {
            parser.write(document, fileName.c_str(), "Shift_JIS");
        }
    }

private:
    qvox::DOMParser parser;
    qvox::Document* document = nullptr;
};

std::unique_ptr<LoadedTree> load(const Source& source) {
    try {
        return std::make_unique<QvoxTree>(source);
    } catch (const qvox::QVOXException& failure) {
        throw std::runtime_error(std::string("qvox: ") + failure.getMessage().ascii_str());
    }
}

const TreeLibraryRegistration registration({"qvox", QVOX_VERSION, LengthUnit::Unit16, true, true,
                                            load});

}  // namespace
}  // namespace bench
