// Documents and handlers that were once enough to crash the process, to lose text or to take its
// memory: each ends in a plain error or is read as it stands.
#include <memory>

#include <gtest/gtest.h>

#include "support/recorder.h"

namespace qvox_test {
namespace {

// Part of what the parse reported, or its error.
std::string result_of(const std::string& document, const Options& options = {}) {
    const Outcome outcome = parse_bytes(document, options);
    return outcome.code == 0 ? joined(outcome.events) : outcome.message;
}

std::string repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
}

// A text declaration in replacement text has no file whose decoder it could change.
TEST(Hostile, TextDeclarationInReplacementText) {
    const std::string plain = result_of(
        "<!DOCTYPE a [<!ENTITY e \"&#60;?xml encoding='UTF-8'?>hello\">]><a>&e;, world</a>");
    EXPECT_NE(plain.find("characters 'hello, world'"), std::string::npos) << plain;

    const std::string behindAFile = result_of(
        "<!DOCTYPE a [<!ENTITY x SYSTEM 'x.ent'>"
        "<!ENTITY e \"&#38;x;&#60;?xml encoding='EUC-JP'?>hello\">]><a>&e;, world</a>",
        {true, false, {{"x.ent", "<x>text</x>"}}});
    EXPECT_NE(behindAFile.find("characters 'hello, world'"), std::string::npos) << behindAFile;

    const std::string text =
        "<!DOCTYPE a [<!ENTITY e \"&#60;?xml encoding='UTF-16'?>hello\">]><a>&e;</a>";
    std::vector<unsigned short> memory(text.begin(), text.end());
    memory.push_back(0);
    qvox::DOMParser parser;
    qvox::Document* document = nullptr;
    observe([&] { document = parser.parse(memory.data()); });
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(quoted(document->getDocumentElement()->getFirstChild()->getNodeValue()), "'hello'");
    parser.free(document);
}

// What is small in the document and large in the events counts as replacement text.
TEST(Hostile, Amplification) {
    const struct {
        std::string declarations;
        std::string content;
    } cases[] = {
        {"<!ATTLIST b c CDATA '" + std::string(65536, 'x') + "'>", repeated("<b/>", 1000)},
        {repeated("<!ATTLIST b c CDATA #IMPLIED>", 3000), ""},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(result_of("<!DOCTYPE a [" + test.declarations + "]><a>" + test.content + "</a>"),
                  "entity expansion too large");
    }
}

TEST(Hostile, ErrorHandlerThatParses) {
    qvox::SAXParser parser;
    Recorder recorder;
    recorder.attach(parser);
    write_file("bad.xml", "<a><b></a>");
    int refusals = 0;
    recorder.when("error ", [&] {
        try {
            parser.parse("bad.xml");
        } catch (const qvox::QVOXException& exception) {
            refusals += exception.getMessage() == "parse already running" ? 1 : 0;
        }
    });
    const Outcome outcome = observe([&] { parser.parse("bad.xml"); }, &recorder);
    EXPECT_EQ(outcome.message, "end tag (a) not match to start tag (b)");
    EXPECT_EQ(refusals, 1);
}

TEST(Hostile, NameOfTheDocumentIsReleasedByAHandler) {
    write_file("a-name-that-no-string-holds-within-itself.xml", "<a b='");
    auto name = std::make_unique<std::string>("a-name-that-no-string-holds-within-itself.xml");
    qvox::SAXParser parser;
    Recorder recorder;
    recorder.attach(parser);
    recorder.when("startDocument", [&] { name.reset(); });
    const Outcome outcome = observe([&] { parser.parse(name->c_str()); }, &recorder);
    EXPECT_EQ(outcome.message,
              "unterminated literal : a-name-that-no-string-holds-within-itself.xml () at line 1, "
              "col 7");
}

TEST(Hostile, NulBehindReturnInUtf16) {
    const std::string document("\xFF\xFE<\0a\0>\0\r\0\0\0<\0/\0a\0>\0", 20);
    EXPECT_EQ(result_of(document), "not xml char (0)");
}

// The second byte of a pair is never markup.
TEST(Hostile, MarkupBehindALeadByteInEucJp) {
    for (const char* pair : {"\xA1<", "\xA5<", "\x8E<", "\xB0\x41"}) {
        EXPECT_EQ(
            result_of(std::string("<?xml version='1.0' encoding='EUC-JP'?><a>") + pair + "/a>"),
            "not xml char (0)");
    }
}

}  // namespace
}  // namespace qvox_test
