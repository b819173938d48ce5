// What is written can be read again: the same tree comes of it.
#include <algorithm>
#include <filesystem>
#include <regex>

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
    const std::string tree = tree_text(parsed.document);
    return std::regex_replace(tree, std::regex("'\\*"), "'") + '\n' + in_memory(parsed.document);
}

// Where the two differ, and how; empty where they don't. Both are long.
std::string difference(const std::string& a, const std::string& b) {
    if (a == b) return {};
    const auto place = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin();
    const std::size_t start = static_cast<std::size_t>(std::max<std::ptrdiff_t>(place - 20, 0));
    return a.substr(start, 60) + "\nis not\n" + b.substr(start, 60);
}

// Returns what the parses said on standard output.
std::string expect_round_trips(const std::string& fileName) {
    std::string warnings;
    for (const char* const encoding : OUTPUT_ENCODINGS) {
        std::string before;
        std::string asAsked;
        std::string asDeclared;
        warnings += output_of([&] {
            Parsed parsed(fileName.c_str());
            replace_surrogates(parsed.document);
            in_file(parsed.document, encoding);
            asAsked = described(Parsed("written.xml"));
            declare(parsed.document, encoding);
            in_file(parsed.document);
            asDeclared = described(Parsed("written.xml"));
            before = described(parsed);
        });
        EXPECT_EQ(difference(asAsked, before), "") << fileName << ' ' << encoding;
        EXPECT_EQ(difference(asDeclared, before), "") << fileName << ' ' << encoding;
    }
    return warnings;
}

TEST(RoundTrip, ExampleDocuments) {
    for (const char* const form : {"utf8", "sjis", "eucjp", "iso2022jp", "utf16be", "utf16le",
                                   "utf16be-bom", "utf16le-bom"}) {
        EXPECT_EQ(expect_round_trips(QVOX_EXAMPLE_DATA "/order-" + std::string(form) + ".xml"), "");
    }
}

// The parts of the document are read from the working directory. Those of the external subset stand
// in the output too, and are then read twice, which gives warnings.
TEST(RoundTrip, ExampleWithADocumentType) {
    for (const auto& entry : std::filesystem::directory_iterator(QVOX_EXAMPLE_DATA)) {
        const std::string name = entry.path().filename().string();
        const std::string type = entry.path().extension().string();
        if (type == ".dtd" || type == ".ent") write_file(name, read_file(entry.path().string()));
    }
    const std::string warnings = expect_round_trips(QVOX_EXAMPLE_DATA "/order.xml");
    EXPECT_NE(warnings.find("QVOX warning : entity decl name (%"), std::string::npos);
    EXPECT_EQ(warnings.find("error"), std::string::npos) << warnings;
}

TEST(RoundTrip, AllCharactersOfShiftJis) {
    std::string characters;
    std::string withinEuc;
    for (int lead = 0x81; lead <= 0xFC; ++lead) {
        if (lead >= 0xA0 && lead < 0xE0) continue;
        for (int trail = 0x40; trail <= 0xFC; ++trail) {
            const std::string pair = {static_cast<char>(lead), static_cast<char>(trail)};
            const qvox::Xstring character(pair.c_str());
            if (character.length() != 1 || *character.data() == 0xFFFD) continue;
            characters += pair;
            if (*character.data() < 0xE000 || *character.data() >= 0xF900) withinEuc += pair;
        }
    }
    EXPECT_EQ(characters.size() / 2, 9604U);
    EXPECT_EQ(withinEuc.size() / 2, 7724U);
    const std::string start = "<?xml version='1.0' encoding='Shift_JIS'?><a>";
    for (const std::string& text : {characters, withinEuc}) {
        write_file("characters.xml", start + text + "</a>");
        const Parsed parsed("characters.xml");
        ASSERT_EQ(parsed.document->getDocumentElement()->getFirstChild()->getNodeValue().length(),
                  static_cast<int>(text.size() / 2));
        for (const char* const encoding : OUTPUT_ENCODINGS) {
            if (encoding == std::string("EUC-JP") && text.size() == characters.size()) continue;
            declare(parsed.document, encoding);
            in_file(parsed.document);
            EXPECT_EQ(difference(described(Parsed("written.xml")), described(parsed)), "")
                << encoding;
        }
    }
}

// The limits that the interface names.
TEST(RoundTrip, WhatCannotBeReadAgain) {
    const struct {
        const char* source;
        const char* written;
        const char* error;
    } cases[] = {
        {"<!DOCTYPE a [<!ENTITY e 'say \"x\"'>]><a>&e;</a>",
         "<!DOCTYPE a [<!ENTITY e \"say \"x\"\">]><a>say &quot;x&quot;</a>", "parse error"},
        {"<!DOCTYPE a [<!ATTLIST a b CDATA '\"'>]><a/>",
         "<!DOCTYPE a [<!ATTLIST a b CDATA \"\"\">]><a b=\"&quot;\"/>", "parse error"},
        {"<!DOCTYPE a SYSTEM '\"'><a/>", "<!DOCTYPE a SYSTEM \"\"\" []><a/>", "parse error"},
    };
    for (const auto& [source, written, error] : cases) {
        write_file("source.xml", source);
        output_of([] { in_file(Parsed("source.xml").document); });
        EXPECT_EQ(read_file("written.xml"), written);
        const Outcome outcome = parse_file("written.xml");
        EXPECT_NE(outcome.message.find(error), std::string::npos) << outcome.message;
    }
    Tree tree("a(']]>')");
    EXPECT_EQ(in_file(tree.document), "<a>]]&gt;</a>");
    EXPECT_EQ(parse_file("written.xml").code, 6);
}

}  // namespace
}  // namespace qvox_test
