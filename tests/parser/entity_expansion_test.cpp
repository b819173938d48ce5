// The bounds on what entities may make of a document, and that honest documents don't meet them.
#include <sys/resource.h>

#include <gtest/gtest.h>

#include "support/recorder.h"

namespace qvox_test {
namespace {

// Counts, where a recorder would keep millions of units.
class Counter : public qvox::DefaultHandler {
public:
    std::size_t elements = 0;
    std::size_t units = 0;  // of texts and of attribute values

    void characters(const qvox::Xstring& text) override { add(text); }
    void startElement(const qvox::Xstring&, const qvox::Xstring&, const qvox::Xstring&,
                      const qvox::Attributes& attributes) override {
        ++elements;
        for (int i = 0; i < attributes.getLength(); ++i) add(attributes.getValue(i));
    }

private:
    void add(const qvox::Xstring& text) { units += static_cast<std::size_t>(text.length()); }
};

constexpr std::size_t FREE_UNITS = 16777216;
const std::string TOO_LARGE = "9 entity expansion too large";
const std::string TOO_DEEP = "9 input stack overflow";

// Code and message of the refusal, or else the number of units that were delivered.
std::string outcome_of(const std::string& document) {
    write_file("doc.xml", document);
    Counter counter;
    qvox::SAXParser parser;
    parser.setContentHandler(&counter);
    const Outcome outcome = observe([&] { parser.parse("doc.xml"); });
    EXPECT_LE(counter.elements, FREE_UNITS / 4 + 1);
    if (outcome.code == 0) return std::to_string(counter.units);
    EXPECT_LE(counter.units, FREE_UNITS);
    return std::to_string(outcome.code) + ' ' + outcome.message;
}

std::string document(const std::string& declarations, const std::string& root) {
    return "<!DOCTYPE r [" + declarations + "]>" + root;
}

std::string times(std::size_t count, const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) result += text;
    return result;
}

// Entities e0 to e`last`: the text of the first is `innermost`, that of each other one `count`
// times a reference to the one before.
std::string chain(int last, const std::string& innermost, const std::string& sign,
                  std::size_t count) {
    std::string declarations = "<!ENTITY e0 '" + innermost + "'>";
    for (int i = 1; i <= last; ++i) {
        declarations += "<!ENTITY e" + std::to_string(i) + " '" +
                        times(count, sign + "e" + std::to_string(i - 1) + ";") + "'>";
    }
    return declarations;
}

std::string external(const std::string& name) {
    const std::string file = name.substr(name.find(' ') + 1) + ".ent";
    return "<!ENTITY " + name + " SYSTEM '" + file + "'>";
}

TEST(EntityExpansion, HonestDocuments) {
    const std::string text = times(100, "x");
    const std::string entity = "<!ENTITY e '" + text + "'>";
    EXPECT_EQ(outcome_of(document(entity, "<r>" + times(10000, "&e;") + "</r>")), "1000000");
    EXPECT_EQ(outcome_of(document(entity, "<r a='" + times(10000, "&e;") + "'/>")), "1000000");
    EXPECT_EQ(outcome_of("<r>" + times(100000, text) + "</r>"), "10000000");
    // Beyond the free amount, a hundred times what was read.
    const std::string uses = "<r>" + times(180000, "&e;") + "</r>";
    EXPECT_EQ(outcome_of(document(entity, "<!--" + times(2000, text) + "-->" + uses)), "18000000");
}

TEST(EntityExpansion, FreeAmountIsExact) {
    const std::string entities = "<!ENTITY e '" + times(4096, "x") + "'><!ENTITY one 'y'>";
    const std::string uses = times(4096, "&e;");
    EXPECT_EQ(outcome_of(document(entities, "<r>" + uses + "</r>")), "16777216");
    EXPECT_EQ(outcome_of(document(entities, "<r a='" + uses + "'/>")), "16777216");
    EXPECT_EQ(outcome_of(document(entities + "<!ENTITY v '" + uses + "'>", "<r/>")), "0");
    EXPECT_EQ(outcome_of(document(entities, "<r>" + uses + "&one;</r>")), TOO_LARGE);
    EXPECT_EQ(outcome_of(document(entities, "<r a='" + uses + "&amp;'/>")), TOO_LARGE);
    EXPECT_EQ(outcome_of(document(entities + "<!ENTITY v '" + uses + "&one;'>", "<r/>")),
              TOO_LARGE);
}

TEST(EntityExpansion, InternalEntities) {
    const std::string lazy = "&#38;";
    const std::string large = "<!ENTITY e '" + times(100000, "x") + "'>";
    const std::string documents[] = {
        document(chain(9, "lol", "&", 10), "<r/>"),  // taken in at the declaration
        document(chain(9, "lol", lazy, 10), "<r>&e9;</r>"),
        document(chain(9, "lol", lazy, 10), "<r a='&e9;'/>"),
        document(chain(40, "", lazy, 2), "<r>&e40;</r>"),
        document(chain(9, "<c/>", lazy, 10), "<r>&e9;</r>"),
        document("<!ENTITY % a '" + times(1000, "x") + "'><!ENTITY % b '" + times(1000, "&#37;a;") +
                     "'><!ENTITY v '" + times(20, "%b;") + "'>",
                 "<r/>"),
        document(large, "<r>" + times(100000, "&e;") + "</r>"),
        document(large, "<r>" + times(100000, "<c a='&e;'/>") + "</r>"),
    };
    for (const std::string& text : documents) {
        EXPECT_EQ(outcome_of(text), TOO_LARGE) << text.substr(0, 200);
    }
    // The document is the first of 1,024 inputs.
    EXPECT_EQ(outcome_of(document(chain(1022, "x", lazy, 1), "<r>&e1022;</r>")), "1");
    EXPECT_EQ(outcome_of(document(chain(1023, "x", lazy, 1), "<r>&e1023;</r>")), TOO_DEEP);
    EXPECT_EQ(outcome_of(document(chain(1023, "x", lazy, 1), "<r a='&e1023;'/>")), TOO_DEEP);
}

TEST(EntityExpansion, ExternalEntities) {
    // Each open entity holds a file, and the system may allow fewer of these.
    rlimit files{};
    getrlimit(RLIMIT_NOFILE, &files);
    files.rlim_cur = std::min<rlim_t>(4096, files.rlim_max);
    setrlimit(RLIMIT_NOFILE, &files);
    write_file("self.ent", "x&self;");
    write_file("a.ent", "<c/>&b;");
    write_file("b.ent", "&a;&a;");
    write_file("p.ent", "x%p;y");
    const std::string two = external("a") + external("b");
    EXPECT_EQ(outcome_of(document(external("self"), "<r>&self;</r>")), TOO_DEEP);
    EXPECT_EQ(outcome_of(document(two, "<r>&a;</r>")), TOO_DEEP);
    EXPECT_EQ(outcome_of(document(external("% p") + "<!ENTITY v '%p;'>", "<r/>")), TOO_DEEP);
    // Each includes the next twice.
    std::string declarations;
    for (int i = 0; i < 30; ++i) {
        const std::string next = "&f" + std::to_string(i + 1) + ";";
        write_file("f" + std::to_string(i) + ".ent", i < 29 ? next + next : "text");
        declarations += external("f" + std::to_string(i));
    }
    EXPECT_EQ(outcome_of(document(declarations, "<r>&f0;</r>")), TOO_LARGE);
}

// A file counts as read once; what it gives beyond that is repetition.
TEST(EntityExpansion, RepeatedFile) {
    write_file("large.ent", times(65536, "x"));
    const std::string uses = times(300, "&large;");
    EXPECT_EQ(outcome_of(document(external("large"), "<r>&large;&large;</r>")), "131072");
    EXPECT_EQ(outcome_of(document(external("large"), "<r>" + uses + "</r>")), TOO_LARGE);
}

TEST(EntityExpansion, RepeatedFileUnderManyNames) {
    write_file("large.ent", times(65536, "x"));
    std::string declarations;
    std::string uses;
    for (int i = 0; i < 300; ++i) {
        const std::string name = "l" + std::to_string(i);
        declarations += "<!ENTITY " + name + " SYSTEM 'large.ent'>";
        uses += "&" + name + ";";
    }
    EXPECT_EQ(outcome_of(document(declarations, "<r>" + uses + "</r>")), TOO_LARGE);
}

}  // namespace
}  // namespace qvox_test
