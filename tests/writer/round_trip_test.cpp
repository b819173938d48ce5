// What is written can be read again: the same tree comes of it.
#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>

#include "support/tree_text.h"
#include "writer/written.h"

namespace qvox_test {
namespace {

constexpr const char* OUTPUT_ENCODINGS[] = {"UTF-16", "Shift_JIS", "EUC-JP"};

// The declaration is the first child of each document here.
void declare(qvox::Document* document, const std::string& encoding) {
    document->getFirstChild()->setNodeValue(
        ("version=\"1.0\" encoding=\"" + encoding + '"').c_str());
}

// No output encoding takes a surrogate pair to the parser: the one character of that kind in the
// examples gives way to its usual form.
void replace_surrogates(qvox::Node* root) {
    for (qvox::Node* node = root->getFirstChild(); node != nullptr; node = node->getNextSibling()) {
        replace_surrogates(node);
        const qvox::Xstring& value = node->getNodeValue();
        for (int i = 0; i + 1 < value.length(); ++i) {
            if (value.data()[i] != 0xD842 || value.data()[i + 1] != 0xDFB7) continue;
            const unsigned short kanji[] = {0x5409, 0};
            node->setNodeValue(value.substr(0, i) + kanji + value.substr(i + 2, value.length()));
        }
    }
}

// Two forms of the whole tree without its document type, because each has its blind spots: one cuts
// names, the other comes from the writer itself. A default that was written is an attribute like
// any other, and texts that a text declaration parted are one.
std::string described(const Parsed& parsed) {
    if (qvox::Node* const type = parsed.document->getDoctype()) {
        qvox::DOMParser().freeNode(parsed.document->removeChild(type));
    }
    parsed.document->normalize();
    std::string tree = tree_text(parsed.document);
    while (tree.find("'*") != std::string::npos) tree.erase(tree.find("'*") + 1, 1);
    return tree + '\n' + in_memory(parsed.document);
}

// Both are long: only where they differ is shown.
void expect_same(const std::string& read, const std::string& before) {
    const auto at = std::mismatch(read.begin(), read.end(), before.begin(), before.end());
    const auto start = static_cast<std::size_t>(at.first - read.begin());
    EXPECT_TRUE(read == before) << read.substr(start, 60) << "\nis not\n"
                                << before.substr(start, 60);
}

// Returns what the parses said on standard output.
std::string expect_round_trips(const std::string& fileName) {
    SCOPED_TRACE(fileName);
    return output_of([&] {
        for (const char* const encoding : OUTPUT_ENCODINGS) {
            Parsed parsed(fileName.c_str());
            replace_surrogates(parsed.document);
            in_file(parsed.document, encoding);
            const std::string asAsked = described(Parsed("written.xml"));
            declare(parsed.document, encoding);
            in_file(parsed.document);
            const std::string before = described(parsed);
            expect_same(asAsked, before);
            expect_same(described(Parsed("written.xml")), before);
        }
    });
}

// The parts of the last document are read from the working directory. Those of the external subset
// stand in the output too, and are then read twice, which gives warnings.
TEST(RoundTrip, ExampleDocuments) {
    for (const std::string form : {"utf8", "sjis", "eucjp", "iso2022jp", "utf16be", "utf16le",
                                   "utf16be-bom", "utf16le-bom"}) {
        EXPECT_EQ(expect_round_trips(QVOX_EXAMPLE_DATA "/order-" + form + ".xml"), "");
    }
    for (const auto& entry : std::filesystem::directory_iterator(QVOX_EXAMPLE_DATA)) {
        const std::string type = entry.path().extension().string();
        if (type != ".dtd" && type != ".ent") continue;
        write_file(entry.path().filename().string(), read_file(entry.path().string()));
    }
    const std::string warnings = expect_round_trips(QVOX_EXAMPLE_DATA "/order.xml");
    EXPECT_NE(warnings.find("QVOX warning : entity decl name (%"), std::string::npos);
    EXPECT_EQ(warnings.find("error"), std::string::npos) << warnings;
}

}  // namespace
}  // namespace qvox_test
