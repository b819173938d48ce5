// The bounds of a parse, that honest documents don't meet them, and what has none.
#include <gtest/gtest.h>

#include "parser/tables.h"
#include "support/system.h"

namespace qvox_test {
namespace {

TEST(Limits, OpenElements) {
    const auto message_of = [](std::size_t depth) {
        return parse_bytes(times(depth, "<a>") + times(depth, "</a>")).message;
    };
    EXPECT_EQ(message_of(4995), "");
    EXPECT_EQ(message_of(4997).substr(0, 33), "doc.xml : parser stack overflow (");
    EXPECT_EQ(message_of(1000000), message_of(4997));
    EXPECT_EQ(parse_bytes("<a>" + times(20000, "<b></b>") + "</a>").message, "");
}

// The limit of a bulk text counts units before CR becomes LF, and a bulk text keeps its CR. A copy
// of one outlives the parse.
TEST(Limits, BulkCharacters) {
    struct Keeper : Recorder {
        void characters(const Text& text) override {
            kept = Text(text);
            isBulk = text.isBulk();
        }
        Text kept;
        bool isBulk = false;
    } keeper;
    Options options;
    options.recorder = &keeper;
    // Each x is 8190 of them.
    for (const Row& row : rows_of(R"(
xyz => 'xyz'
xyz! => bulk 'xyz!'
<![CDATA[xyz]]> => 'xyz'
<![CDATA[xyz!]]> => bulk 'xyz!'
xy&#13; => 'xy\n'
x&#13;&#10; => 'x\n'
xy&#13;&#10; => bulk 'xy\r\n'
x&#65536; => 'x𐀀'
xy&#65536; => bulk 'xy𐀀'
)")) {
        const std::string x(8190, 'x');
        parse_bytes("<a>" + replaced(row[0], "x", x) + "</a>", options);
        EXPECT_EQ((keeper.isBulk ? "bulk " : "") + quoted(keeper.kept),
                  replaced(row.at(1), "x", x));
        EXPECT_FALSE(keeper.kept.isBulk());
    }
}

// No token has a limit: not the first buffer's 64 Ki units, and not what a block of the heap takes.
TEST(Limits, LongTokens) {
    for (const std::size_t length : {65535U, 65536U, 100000U, 3U << 20}) {
        for (const Row& row : rows_of(R"(
<X/>                  => startElement - 'X' 'X'
<a X='X'/>            => startElement - 'a' 'a' [- 'X' 'X' - 'X']
<xX:a xmlns:xX='u'/>  => startElement 'u' 'a' 'xX:a'
<a>X</a>              => characters bulk 'X'
<a><![CDATA[X]]></a>  => characters bulk 'X'
<a/><!--X-->          => comment 'X'
<?X X?><a/>           => processingInstruction 'X' 'X'
)")) {
            const auto grown = [&](const std::string& text) {
                return replaced(text, "X", std::string(length, 'x'));
            };
            const Outcome outcome = parse_bytes(grown(row[0]));
            EXPECT_EQ(outcome.message, "");
            EXPECT_NE(outcome.events.find(grown(row.at(1)) + "\n"), std::string::npos)
                << row[0] << length;
        }
    }
}

const std::string TOO_LARGE = "9 entity expansion too large";
const std::string TOO_DEEP = "9 input stack overflow";

// Code and message of the refusal, or else the number of units in texts and attribute values, where
// a recorder would keep millions of them.
std::string outcome_of(const std::string& declarations, const std::string& root) {
    struct Counter : qvox::DefaultHandler {
        std::size_t units = 0;
        void add(const qvox::Xstring& text) { units += static_cast<std::size_t>(text.length()); }
        void characters(const qvox::Xstring& text) override { add(text); }
        void startElement(const qvox::Xstring&, const qvox::Xstring&, const qvox::Xstring&,
                          const qvox::Attributes& attributes) override {
            for (int i = 0; i < attributes.getLength(); ++i) add(attributes.getValue(i));
        }
    } counter;
    write_file("doc.xml", "<!DOCTYPE r [" + declarations + "]>" + root);
    qvox::SAXParser parser;
    parser.setContentHandler(&counter);
    const Outcome outcome = observe([&] { parser.parse("doc.xml"); });
    if (outcome.code == 0) return std::to_string(counter.units);
    EXPECT_LE(counter.units, 16777216U);
    return std::to_string(outcome.code) + ' ' + outcome.message;
}

std::string internal(const std::string& name, const std::string& text) {
    return "<!ENTITY " + name + " '" + text + "'>";
}

std::string external(const std::string& name, const std::string& file) {
    return "<!ENTITY " + name + " SYSTEM '" + file + "'>";
}

// Entities e0 to e`last`, the first with the text `innermost`, each other one with `count`
// references to the one before.
std::string chain(int last, const std::string& innermost, const std::string& sign,
                  std::size_t count) {
    std::string all = internal("e0", innermost);
    for (int i = 1; i <= last; ++i) {
        const std::string reference = sign + "e" + std::to_string(i - 1) + ";";
        all += internal("e" + std::to_string(i), times(count, reference));
    }
    return all;
}

// Beyond the free amount of 16 Mi units, a hundred times what was read.
TEST(Limits, HonestExpansion) {
    const std::string e = internal("e", times(100, "x"));
    const std::string padding = "<!--" + times(200000, "x") + "-->";
    EXPECT_EQ(outcome_of("", "<r>" + times(10000000, "x") + "</r>"), "10000000");
    EXPECT_EQ(outcome_of(e, padding + "<r>" + times(180000, "&e;") + "</r>"), "18000000");

    const std::string exact = internal("e", times(4096, "x")) + internal("one", "y");
    const std::string uses = times(4096, "&e;");
    EXPECT_EQ(outcome_of(exact, "<r>" + uses + "</r>"), "16777216");
    EXPECT_EQ(outcome_of(exact, "<r a='" + uses + "'/>"), "16777216");
    EXPECT_EQ(outcome_of(exact + internal("v", uses), "<r/>"), "0");
    EXPECT_EQ(outcome_of(exact, "<r>" + uses + "&one;</r>"), TOO_LARGE);
    EXPECT_EQ(outcome_of(exact, "<r a='" + uses + "&amp;'/>"), TOO_LARGE);
    EXPECT_EQ(outcome_of(exact + internal("v", uses + "&one;"), "<r/>"), TOO_LARGE);
}

// What is small in the document and large in the events counts as replacement text.
TEST(Limits, InternalEntities) {
    const std::string large = internal("e", times(100000, "x"));
    const std::string hidden = chain(9, "lol", "&#38;", 10);
    const std::string cases[][3] = {
        {chain(9, "lol", "&", 10), "<r/>", TOO_LARGE},
        {hidden, "<r>&e9;</r>", TOO_LARGE},
        {hidden, "<r a='&e9;'/>", TOO_LARGE},
        {chain(9, "<c/>", "&#38;", 10), "<r>&e9;</r>", TOO_LARGE},
        {chain(40, "", "&#38;", 2), "<r>&e40;</r>", TOO_LARGE},
        {internal("% p", times(100000, "x")) + internal("v", times(200, "%p;")), "<r/>", TOO_LARGE},
        {large, "<r>" + times(100000, "<c a='&e;'/>") + "</r>", TOO_LARGE},
        {"<!ATTLIST b c CDATA '" + times(65536, "x") + "'>", "<r>" + times(1000, "<b/>") + "</r>",
         TOO_LARGE},
        {times(3000, "<!ATTLIST b c CDATA #IMPLIED>"), "<r/>", TOO_LARGE},
        // The document is the first of 1,024 inputs.
        {chain(1022, "x", "&#38;", 1), "<r>&e1022;</r>", "1"},
        {chain(1023, "x", "&#38;", 1), "<r a='&e1023;'/>", TOO_DEEP},
        {internal("e", "&#38;e;"), "<r>&e;</r>", TOO_DEEP},
    };
    for (const auto& [declarations, root, outcome] : cases) {
        EXPECT_EQ(outcome_of(declarations, root), outcome) << root.substr(0, 30);
    }
}

// A file counts as read once, whatever its entities and paths are; what it gives beyond that is
// repetition.
TEST(Limits, ExternalEntities) {
    // Each open entity holds a file, of which the system may allow fewer.
    const os::OpenFilesLimit many(2048);
    write_file("a.ent", "x&a;");
    write_file("b.ent", "<c/>&c;");
    write_file("c.ent", "&b;&b;");
    write_file("p.ent", "x%p;y");
    write_file("large.ent", times(65536, "x"));
    std::string doubled;  // each includes the next twice
    std::string same;
    std::string paths;
    std::string uses;
    for (std::size_t i = 0; i < 300; ++i) {
        const std::string name = "f" + std::to_string(i);
        const std::string next = "&f" + std::to_string(i + 1) + ";";
        if (i < 30) write_file(name, i < 29 ? next + next : "text");
        doubled += external(name, name);
        same += external(name, "large.ent");
        paths += external(name, times(i, "./") + "large.ent");
        uses += "&" + name + ";";
    }
    const std::string large = external("e", "large.ent");
    const std::string cases[][3] = {
        {external("a", "a.ent"), "<r>&a;</r>", TOO_DEEP},
        {external("b", "b.ent") + external("c", "c.ent"), "<r>&b;</r>", TOO_DEEP},
        {external("% p", "p.ent") + internal("v", "%p;"), "<r/>", TOO_DEEP},
        {doubled, "<r>&f0;</r>", TOO_LARGE},
        {large, "<r>&e;&e;</r>", "131072"},
        {large, "<r>" + times(300, "&e;") + "</r>", TOO_LARGE},
        {same, "<r>" + uses + "</r>", TOO_LARGE},
        {paths, "<r>" + uses + "</r>", TOO_LARGE},
    };
    for (const auto& [declarations, root, outcome] : cases) {
        EXPECT_EQ(outcome_of(declarations, root), outcome) << root.substr(0, 30);
    }
}

}  // namespace
}  // namespace qvox_test
