#include <cstring>
#include <stdexcept>

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xpath.h>

#include "tree_libraries.h"
#include "tree_walk.h"

namespace bench {
namespace {

struct Links {
    static xmlNode* firstChild(const xmlNode* node) { return node->children; }
    static xmlNode* nextSibling(const xmlNode* node) { return node->next; }
    static xmlNode* parent(const xmlNode* node) { return node->parent; }
};

long lengthOf(const xmlChar* text) {
    return text == nullptr ? 0
                           : static_cast<long>(std::strlen(reinterpret_cast<const char*>(text)));
}

void add(const xmlNode* node, Tally& tally) {
    if (node->type == XML_TEXT_NODE) {
        tally.textLength += lengthOf(node->content);
    } else if (node->type == XML_ELEMENT_NODE) {
        ++tally.elements;
        for (const xmlAttr* one = node->properties; one != nullptr; one = one->next) {
            ++tally.attributes;
            // A value without references is one text.
            if (one->children != nullptr) tally.valueLength += lengthOf(one->children->content);
        }
    }
}

Tally countAll(xmlNode* root) {
    Tally tally;
    walkTree<Links>(root, [&tally](const xmlNode* node) { add(node, tally); });
    return tally;
}

struct FreeDocument {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
struct FreeContext {
    void operator()(xmlXPathContext* context) const { xmlXPathFreeContext(context); }
};
struct FreeObject {
    void operator()(xmlXPathObject* object) const { xmlXPathFreeObject(object); }
};

class LibxmlTree : public LoadedTree {
public:
    explicit LibxmlTree(const Source& source)
        : document(source.allReadTheFile
                       ? xmlReadFile(source.fileName.c_str(), nullptr, XML_PARSE_HUGE)
                       : xmlReadMemory(source.bytes.data(), static_cast<int>(source.bytes.size()),
                                       nullptr, nullptr, XML_PARSE_HUGE)) {
        if (!document) throw std::runtime_error("libxml2: cannot read the document");
    }

    Tally count() override { return countAll(xmlDocGetRootElement(document.get())); }

    long walk() override {
        return countElements<Links>(xmlDocGetRootElement(document.get()), [](const xmlNode* node) {
            return node->type == XML_ELEMENT_NODE;
        });
    }

    long search(const std::string& name) override {
        const std::string path = "//" + name;
        const std::unique_ptr<xmlXPathContext, FreeContext> context(
            xmlXPathNewContext(document.get()));
        const std::unique_ptr<xmlXPathObject, FreeObject> found(
            xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(path.c_str()), context.get()));
        return found->nodesetval->nodeNr;
    }

    Tally clone(bool counted) override {
        constexpr int withAllBelow = 1;
        xmlNode* const copy =
            xmlDocCopyNode(xmlDocGetRootElement(document.get()), document.get(), withAllBelow);
        if (copy == nullptr) throw std::runtime_error("libxml2: cannot copy");
        const Tally tally = counted ? countAll(copy) : Tally();
        xmlFreeNode(copy);
        return tally;
    }

    void save(const std::string& fileName) override {
        if (xmlSaveFile(fileName.c_str(), document.get()) < 0) {
            throw std::runtime_error("libxml2: cannot write " + fileName);
        }
    }

private:
    std::unique_ptr<xmlDoc, FreeDocument> document;
};

const TreeLibraryRegistration registration(
    {"libxml2", LIBXML_DOTTED_VERSION, LengthUnit::Utf8Byte, false, true,
     [](const Source& source) -> std::unique_ptr<LoadedTree> {
         return std::make_unique<LibxmlTree>(source);
     }});

}  // namespace
}  // namespace bench
