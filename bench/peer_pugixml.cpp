#include <cstring>
#include <pugixml.hpp>
#include <stdexcept>
#include <string>

#include "tree_libraries.h"
#include "tree_walk.h"

namespace bench {
namespace {

struct Links {
    static pugi::xml_node firstChild(pugi::xml_node node) { return node.first_child(); }
    static pugi::xml_node nextSibling(pugi::xml_node node) { return node.next_sibling(); }
    static pugi::xml_node parent(pugi::xml_node node) { return node.parent(); }
};

void add(pugi::xml_node node, Tally& tally) {
    if (node.type() == pugi::node_pcdata) {
        tally.textLength += static_cast<long>(std::strlen(node.value()));
    } else if (node.type() == pugi::node_element) {
        ++tally.elements;
        for (const pugi::xml_attribute one : node.attributes()) {
            ++tally.attributes;
            tally.valueLength += static_cast<long>(std::strlen(one.value()));
        }
    }
}

Tally countAll(pugi::xml_node root) {
    Tally tally;
    walkTree<Links>(root, [&tally](pugi::xml_node node) { add(node, tally); });
    return tally;
}

class PugixmlTree : public LoadedTree {
public:
    explicit PugixmlTree(const Source& source) {
        constexpr unsigned options = pugi::parse_full | pugi::parse_ws_pcdata;
        const pugi::xml_parse_result result =
            source.allReadTheFile
                ? document.load_file(source.fileName.c_str(), options)
                : document.load_buffer(source.bytes.data(), source.bytes.size(), options);
        if (!result) throw std::runtime_error(std::string("pugixml: ") + result.description());
        encoding = result.encoding;
    }

    Tally count() override { return countAll(document); }

    long walk() override {
        return countElements<Links>(
            document.root(), [](pugi::xml_node node) { return node.type() == pugi::node_element; });
    }

    long search(const std::string& name) override {
        return static_cast<long>(document.select_nodes(("//" + name).c_str()).size());
    }

    Tally clone(bool counted) override {
        const pugi::xml_node copy = document.append_copy(document.document_element());
        const Tally tally = counted ? countAll(copy) : Tally();
        document.remove_child(copy);
        return tally;
    }

    void save(const std::string& fileName) override {
        const unsigned mark = encoding == pugi::encoding_utf8 ? 0 : pugi::format_write_bom;
        if (!document.save_file(fileName.c_str(), "", pugi::format_raw | mark, encoding)) {
            throw std::runtime_error("pugixml: cannot write " + fileName);
        }
    }

private:
    pugi::xml_document document;
    pugi::xml_encoding encoding;
};

std::string version() {
    // Three digits behind the first: 1130 is 1.13.
    constexpr int number = PUGIXML_VERSION;
    return std::to_string(number / 1000) + "." + std::to_string(number % 1000 / 10);
}

const TreeLibraryRegistration registration(
    {"pugixml", version(), LengthUnit::Utf8Byte, true, false,
     [](const Source& source) -> std::unique_ptr<LoadedTree> {
         return std::make_unique<PugixmlTree>(source);
     }});

}  // namespace
}  // namespace bench
