// The bounds on what entities may make of a document, and that honest documents don't meet them.
#include <sys/resource.h>

#include <gtest/gtest.h>

#include "support/recorder.h"

namespace qvox_test {
namespace {

// Counts, where a recorder would keep millions of units.
struct Counter : qvox::DefaultHandler {
    std::size_t units = 0;  // of texts and of attribute values
    void add(const qvox::Xstring& text) { units += static_cast<std::size_t>(text.length()); }
    void characters(const qvox::Xstring& text) override { add(text); }
    void startElement(const qvox::Xstring&, const qvox::Xstring&, const qvox::Xstring&,
                      const qvox::Attributes& attributes) override {
        for (int i = 0; i < attributes.getLength(); ++i) add(attributes.getValue(i));
    }
};

const std::string TOO_LARGE = "9 entity expansion too large";
const std::string TOO_DEEP = "9 input stack overflow";

// Code and message of the refusal, or else the number of units that were delivered.
std::string outcome_of(const std::string& declarations, const std::string& root) {
    write_file("doc.xml", "<!DOCTYPE r [" + declarations + "]>" + root);
    Counter counter;
    qvox::SAXParser parser;
    parser.setContentHandler(&counter);
    const Outcome outcome = observe([&] { parser.parse("doc.xml"); });
    if (outcome.code == 0) return std::to_string(counter.units);
    EXPECT_LE(counter.units, 16777216U);
    return std::to_string(outcome.code) + ' ' + outcome.message;
}

std::string times(std::size_t count, const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) result += text;
    return result;
}

std::string internal(const std::string& name, const std::string& text) {
    return "<!ENTITY " + name + " '" + text + "'>";
}

std::string external(const std::string& name, const std::string& file) {
    return "<!ENTITY " + name + " SYSTEM '" + file + "'>";
}

// Entities e0 to e`last`, the first with the text `innermost`, each other one with `count`
// references to the one before.
std::string chain(int last, const std::string& innermost, const std::string& sign, int count) {
    std::string declarations = internal("e0", innermost);
    for (int i = 1; i <= last; ++i) {
        const std::string reference = sign + "e" + std::to_string(i - 1) + ";";
        declarations +=
            internal("e" + std::to_string(i), times(static_cast<std::size_t>(count), reference));
    }
    return declarations;
}

TEST(EntityExpansion, HonestDocuments) {
    const std::string e = internal("e", times(100, "x"));
    EXPECT_EQ(outcome_of(e, "<r>" + times(10000, "&e;") + "</r>"), "1000000");
    EXPECT_EQ(outcome_of(e, "<r a='" + times(10000, "&e;") + "'/>"), "1000000");
    EXPECT_EQ(outcome_of("", "<r>" + times(10000000, "x") + "</r>"), "10000000");
    // Beyond the free amount, a hundred times what was read.
    const std::string padding = "<!--" + times(200000, "x") + "-->";
    EXPECT_EQ(outcome_of(e, padding + "<r>" + times(180000, "&e;") + "</r>"), "18000000");
}

TEST(EntityExpansion, FreeAmountIsExact) {
    const std::string e = internal("e", times(4096, "x")) + internal("one", "y");
    const std::string uses = times(4096, "&e;");
    EXPECT_EQ(outcome_of(e, "<r>" + uses + "</r>"), "16777216");
    EXPECT_EQ(outcome_of(e, "<r a='" + uses + "'/>"), "16777216");
    EXPECT_EQ(outcome_of(e + internal("v", uses), "<r/>"), "0");
    EXPECT_EQ(outcome_of(e, "<r>" + uses + "&one;</r>"), TOO_LARGE);
    EXPECT_EQ(outcome_of(e, "<r a='" + uses + "&amp;'/>"), TOO_LARGE);
    EXPECT_EQ(outcome_of(e + internal("v", uses + "&one;"), "<r/>"), TOO_LARGE);
}

TEST(EntityExpansion, InternalEntities) {
    const std::string large = internal("e", times(100000, "x"));
    EXPECT_EQ(outcome_of(chain(9, "lol", "&", 10), "<r/>"), TOO_LARGE);
    EXPECT_EQ(outcome_of(chain(9, "lol", "&#38;", 10), "<r>&e9;</r>"), TOO_LARGE);
    EXPECT_EQ(outcome_of(chain(9, "lol", "&#38;", 10), "<r a='&e9;'/>"), TOO_LARGE);
    EXPECT_EQ(outcome_of(chain(9, "<c/>", "&#38;", 10), "<r>&e9;</r>"), TOO_LARGE);
    EXPECT_EQ(outcome_of(chain(40, "", "&#38;", 2), "<r>&e40;</r>"), TOO_LARGE);
    EXPECT_EQ(
        outcome_of(internal("% p", times(100000, "x")) + internal("v", times(200, "%p;")), "<r/>"),
        TOO_LARGE);
    EXPECT_EQ(outcome_of(large, "<r>" + times(100000, "&e;") + "</r>"), TOO_LARGE);
    EXPECT_EQ(outcome_of(large, "<r>" + times(100000, "<c a='&e;'/>") + "</r>"), TOO_LARGE);
    // The document is the first of 1,024 inputs.
    EXPECT_EQ(outcome_of(chain(1022, "x", "&#38;", 1), "<r>&e1022;</r>"), "1");
    EXPECT_EQ(outcome_of(chain(1023, "x", "&#38;", 1), "<r a='&e1023;'/>"), TOO_DEEP);
}

TEST(EntityExpansion, ExternalEntities) {
    // Each open entity holds a file, of which the system may allow fewer.
    rlimit files{};
    getrlimit(RLIMIT_NOFILE, &files);
    files.rlim_cur = std::min<rlim_t>(4096, files.rlim_max);
    setrlimit(RLIMIT_NOFILE, &files);
    write_file("a.ent", "x&a;");
    write_file("b.ent", "<c/>&c;");
    write_file("c.ent", "&b;&b;");
    write_file("p.ent", "x%p;y");
    EXPECT_EQ(outcome_of(external("a", "a.ent"), "<r>&a;</r>"), TOO_DEEP);
    EXPECT_EQ(outcome_of(external("b", "b.ent") + external("c", "c.ent"), "<r>&b;</r>"), TOO_DEEP);
    EXPECT_EQ(outcome_of(external("% p", "p.ent") + internal("v", "%p;"), "<r/>"), TOO_DEEP);
    // Each includes the next twice.
    std::string declarations;
    for (int i = 0; i < 30; ++i) {
        const std::string name = "f" + std::to_string(i);
        const std::string next = "&f" + std::to_string(i + 1) + ";";
        write_file(name, i < 29 ? next + next : "text");
        declarations += external(name, name);
    }
    EXPECT_EQ(outcome_of(declarations, "<r>&f0;</r>"), TOO_LARGE);
}

// A file counts as read once; what it gives beyond that is repetition.
TEST(EntityExpansion, RepeatedFile) {
    write_file("large.ent", times(65536, "x"));
    const std::string e = external("e", "large.ent");
    EXPECT_EQ(outcome_of(e, "<r>&e;&e;</r>"), "131072");
    EXPECT_EQ(outcome_of(e, "<r>" + times(300, "&e;") + "</r>"), TOO_LARGE);
}

// `file_of` gives the name of the file for each of 300 entities.
template <typename FileOf>
std::string outcome_of_aliases(FileOf file_of) {
    write_file("large.ent", times(65536, "x"));
    std::string declarations;
    std::string uses;
    for (std::size_t i = 0; i < 300; ++i) {
        declarations += external("e" + std::to_string(i), file_of(i));
        uses += "&e" + std::to_string(i) + ";";
    }
    return outcome_of(declarations, "<r>" + uses + "</r>");
}

TEST(EntityExpansion, RepeatedFileUnderManyEntities) {
    EXPECT_EQ(outcome_of_aliases([](std::size_t) { return "large.ent"; }), TOO_LARGE);
}

TEST(EntityExpansion, RepeatedFileUnderManyPaths) {
    EXPECT_EQ(outcome_of_aliases([](std::size_t i) { return times(i, "./") + "large.ent"; }),
              TOO_LARGE);
}

}  // namespace
}  // namespace qvox_test
