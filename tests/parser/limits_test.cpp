// The bounds of a parse, and what has none.
#include <sys/resource.h>

#include <gtest/gtest.h>

#include "support/recorder.h"

namespace qvox_test {
namespace {

std::string repeated(const std::string& text, int count) {
    std::string out;
    for (int i = 0; i < count; ++i) out += text;
    return out;
}

TEST(Limits, OpenElements) {
    const auto nested = [](int depth) {
        return parse_bytes(repeated("<a>", depth) + repeated("</a>", depth));
    };
    EXPECT_EQ(nested(4995).message, "");
    const Outcome refused = nested(4997);
    EXPECT_EQ(refused.code, 6);
    EXPECT_EQ(refused.message.substr(0, 33), "doc.xml : parser stack overflow (");
    EXPECT_EQ(nested(1000000).message, refused.message);
    EXPECT_EQ(parse_bytes("<a>" + repeated("<b></b>", 20000) + "</a>").message, "");
}

// The limit of a bulk text counts units before CR becomes LF, and a bulk text keeps its CR.
TEST(Limits, BulkCharacters) {
    const std::string x(8190, 'x');
    const struct {
        std::string content;
        std::string event;
    } cases[] = {
        {x + "yz", "characters '" + x + "yz'"},
        {x + "yz!", "characters bulk '" + x + "yz!'"},
        {"<![CDATA[" + x + "yz]]>", "characters '" + x + "yz'"},
        {"<![CDATA[" + x + "yz!]]>", "characters bulk '" + x + "yz!'"},
        {x + "y&#13;", "characters '" + x + "y\\n'"},
        {x + "&#13;&#10;", "characters '" + x + "\\n'"},
        {x + "y&#13;&#10;", "characters bulk '" + x + "y\\r\\n'"},
        {x + "&#x10000;", "characters '" + x + "\xF0\x90\x80\x80'"},
        {x + "y&#x10000;", "characters bulk '" + x + "y\xF0\x90\x80\x80'"},
    };
    for (const auto& test : cases) {
        const Outcome outcome = parse_bytes("<a>" + test.content + "</a>");
        EXPECT_NE(outcome.events.find("\n" + test.event + "\n"), std::string::npos)
            << test.content.substr(x.size());
    }
}

TEST(Limits, CopyOfBulkTextOutlivesTheParse) {
    class Keeper : public Recorder {
    public:
        void characters(const Text& text) override { kept = Text(text); }
        Text kept;
    } keeper;
    Options options;
    options.recorder = &keeper;
    parse_bytes("<a>" + std::string(100000, 'x') + "</a>", options);
    EXPECT_FALSE(keeper.kept.isBulk());
    EXPECT_TRUE(keeper.kept == std::string(100000, 'x').c_str());
}

// No token has a limit: not the first buffer's 64 Ki units, and not what a block of the heap takes.
TEST(Limits, LongTokens) {
    for (const std::size_t length :
         {std::size_t{65535}, std::size_t{65536}, std::size_t{100000}, std::size_t{3} << 20}) {
        const std::string x(length, 'x');
        const std::string name = "'" + x + "'";
        const struct {
            std::string document;
            std::string event;
        } cases[] = {
            {"<" + x + "/>", "startElement - " + name + ' ' + name},
            {"<a " + x + "='" + x + "'/>",
             "startElement - 'a' 'a' [- " + name + ' ' + name + " - " + name + "]"},
            {"<x" + x + ":a xmlns:x" + x + "='u'/>", "startElement 'u' 'a' 'x" + x + ":a'"},
            {"<a>" + x + "</a>", "characters bulk " + name},
            {"<a><![CDATA[" + x + "]]></a>", "characters bulk " + name},
            {"<a/><!--" + x + "-->", "comment " + name},
            {"<?" + x + " " + x + "?><a/>", "processingInstruction " + name + ' ' + name},
        };
        for (const auto& test : cases) {
            const Outcome outcome = parse_bytes(test.document);
            EXPECT_EQ(outcome.message, "");
            EXPECT_NE(outcome.events.find(test.event + "\n"), std::string::npos)
                << test.event.substr(0, 20) << length;
        }
    }
}

// The text of each entity is a reference to the next.
std::string chain(int length) {
    std::string document = "<!DOCTYPE a [";
    for (int i = 1; i < length; ++i) {
        document += "<!ENTITY e" + std::to_string(i) + " '&#38;e" + std::to_string(i + 1) + ";'>";
    }
    return document + "<!ENTITY e" + std::to_string(length) + " 'text'>]><a>&e1;</a>";
}

TEST(Limits, InputLevels) {
    const Outcome accepted = parse_bytes(chain(1023));  // 1024 with the document
    EXPECT_EQ(accepted.message + accepted.output, "");
    EXPECT_NE(accepted.events.find("\ncharacters 'text'\n"), std::string::npos);
    for (const std::string& document :
         {chain(1024), std::string("<!DOCTYPE a [<!ENTITY e '&#38;e;'>]><a>&e;</a>")}) {
        const Outcome refused = parse_bytes(document);
        EXPECT_EQ(refused.code, 9);
        EXPECT_EQ(refused.message, "input stack overflow");
    }
}

// Where no more files can be opened, a reference stands for nothing.
TEST(Limits, OpenFiles) {
#if defined(QVOX_ADDRESS_SANITIZER)
    GTEST_SKIP() << "the sanitizers need file handles themselves";
#endif
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit few{64, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    Options options;
    options.files = {{"e.ent", "&e;xyz"}};
    const Outcome outcome =
        parse_bytes("<!DOCTYPE a [<!ENTITY e SYSTEM 'e.ent'>]><a>&e;</a>", options);
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(outcome.output, "QVOX warning : system id (e.ent) can't open\n");
    EXPECT_NE(outcome.events.find("characters 'xyzxyz"), std::string::npos);
}

}  // namespace
}  // namespace qvox_test
