// Documents with something long and something that comes often, both twice as long and often in the
// second run. Work is counted in allocated bytes and in bytes of reports, not by the clock: it
// doubles with the document, or the document is refused for what it would make.
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "faults/allocations.h"
#include "support/recorder.h"

namespace qvox_test {
namespace {

using Shape = std::function<std::string(std::size_t)>;

std::string times(std::size_t count, const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < count; ++i) out += text;
    return out;
}

std::string numbered(std::size_t count, const std::string& before, const std::string& behind) {
    std::string out;
    for (std::size_t i = 0; i < count; ++i) out += before + std::to_string(i) + behind;
    return out;
}

std::string document(const std::string& declarations, const std::string& content) {
    return "<!DOCTYPE a [" + declarations + "]><a>" + content + "</a>";
}

enum Growth {
    LINEAR,
    CHARGED,  // for what it makes: the second run is refused
    EITHER
};

struct Row {
    const char* name;
    Growth growth;
    std::string (*shape)(std::size_t n);
};

// For n of 100 and 200. What is charged comes to more than the limit of 16 Mi units in the second
// run alone.
std::string x(std::size_t n) { return std::string(100 * n, 'x'); }
std::size_t often(std::size_t n) { return 4 * n; }

const Row rows[] = {
    {"text and tags", LINEAR,
     [](std::size_t n) { return document("", x(n) + times(often(n), "<b>t</b>")); }},
    {"a value and tags", LINEAR,
     [](std::size_t n) {
         return document("", "<b c='" + x(n) + "'/>" + times(often(n), "<b c=''/>"));
     }},
    {"names and tags", LINEAR,
     [](std::size_t n) {
         return document("", numbered(often(n), "<b", "/>") + times(often(n), "<c/>"));
     }},
    {"an entity's text and references", CHARGED,
     [](std::size_t n) {
         return document("<!ENTITY e '" + x(n) + "'>", times(3 * often(n), "&e;"));
     }},
    {"a default and tags", CHARGED,
     [](std::size_t n) {
         return document("<!ATTLIST b c CDATA '" + x(n) + "'>", times(3 * often(n), "<b/>"));
     }},
    {"definitions without default and tags", LINEAR,
     [](std::size_t n) {
         return document("<!ATTLIST b" + numbered(often(n), " c", " CDATA #IMPLIED") + ">",
                         times(often(n), "<b/>"));
     }},
};

// What isn't charged or shared yet.
const Row waitingRows[] = {
    {"a default and attribute lists", EITHER,
     [](std::size_t n) {
         return document(
             "<!ATTLIST b c CDATA '" + x(n) + "'>" + times(3 * often(n), "<!ATTLIST b>"), "");
     }},
    {"a namespace and tags", EITHER,
     [](std::size_t n) {
         return "<a xmlns='" + x(n) + "'>" + times(2 * often(n), "<b/>") + "</a>";
     }},
    {"a defaulted attribute's name and tags", EITHER,
     [](std::size_t n) {
         return document("<!ATTLIST b " + x(n) + " CDATA 'd'>", times(2 * often(n), "<b/>"));
     }},
    {"an enumerated type and tags", EITHER,
     [](std::size_t n) {
         return document("<!ATTLIST b c (" + x(n) + ") #IMPLIED>",
                         times(2 * often(n), "<b c='v'/>"));
     }},
    {"undeclared entities in entities", CHARGED,
     [](std::size_t n) {
         return document("<!ENTITY e '" + times(10 * n, "&#38;u;") + "'>", times(often(n), "&e;"));
     }},
};

struct Work {
    std::size_t bytes;
    int code;
};

template <typename Parser>
Work work_of(const std::string& bytes) {
    write_file("grown.xml", bytes);
    const std::size_t before = allocated_bytes();
    const Outcome outcome = observe([] {
        Parser parser;
        if constexpr (std::is_same_v<Parser, qvox::DOMParser>) {
            parser.free(parser.parse("grown.xml"));
        } else {
            qvox::DefaultHandler handler;
            parser.setContentHandler(&handler);
            parser.parse("grown.xml");
        }
    });
    return {allocated_bytes() - before + outcome.output.size(), outcome.code};
}

template <typename Parser>
void expect_linear(const Row& row) {
    const Work once = work_of<Parser>(row.shape(100));
    const Work twice = work_of<Parser>(row.shape(200));
    const bool isRefused = twice.code == qvox::QVOXException::INVALID_ENTITY_REF_ERR;
    if (row.growth != EITHER) {
        EXPECT_EQ(isRefused, row.growth == CHARGED) << "code " << twice.code;
    }
    if (isRefused) return;
    EXPECT_EQ(once.code + twice.code, 0);
    EXPECT_LT(twice.bytes, 3 * once.bytes);
}

void expect_linear_by_both(const Row& row) {
    SCOPED_TRACE(row.name);
    expect_linear<qvox::SAXParser>(row);
    expect_linear<qvox::DOMParser>(row);
}

TEST(Growth, Doubled) {
    for (const Row& row : rows) expect_linear_by_both(row);
}

TEST(Growth, Waiting) {
    for (const Row& row : waitingRows) expect_linear_by_both(row);
}

}  // namespace
}  // namespace qvox_test
