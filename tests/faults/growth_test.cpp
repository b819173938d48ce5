// Documents with something long and something that comes often, both twice as long and often in the
// second run. Work is counted in allocated bytes and in bytes of reports, not by the clock: it
// doubles with the document, or the document is refused for what it would make.
#include <functional>
#include <regex>
#include <string>

#include <gtest/gtest.h>

#include "faults/allocations.h"
#include "support/recorder.h"
#include "support/tables.h"

namespace qvox_test {
namespace {

// A document for the size n: {4:text} is the text 4 * n times, each with its number for "@".
std::string expanded(const std::string& text, std::size_t n) {
    static const std::regex piece("\\{(\\d+):([^}]*)\\}");
    std::smatch found;
    if (!std::regex_search(text, found, piece)) return text;
    std::string out = found.prefix();
    for (std::size_t i = 0; i < n * std::stoul(found[1]); ++i) {
        for (const char c : found[2].str()) out += c == '@' ? std::to_string(i) : std::string(1, c);
    }
    return out + expanded(found.suffix(), n);
}

// For n of 100 and 200. What is charged for what it makes comes to more than the limit of 16 Mi
// units in the second run alone.
constexpr const char* DOCUMENTS = R"(
<a>{100:x}{4:<b>t</b>}</a> => doubles
<a><b c='{100:x}'/>{4:<b c=''/>}</a> => doubles
<a>{4:<b@/>}{4:<c/>}</a> => doubles
<!DOCTYPE a [<!ATTLIST b{4: c@ CDATA #IMPLIED}>]><a>{4:<b/>}</a> => doubles
<!DOCTYPE a [<!ENTITY e '{100:x}'>]><a>{12:&e;}</a> => is refused
<!DOCTYPE a [<!ATTLIST b c CDATA '{100:x}'>]><a>{12:<b/>}</a> => is refused
<!DOCTYPE a [<!ENTITY e '{10:&#38;u;}'>]><a>{4:&e;}</a> => is refused
<!DOCTYPE a [<!ATTLIST b c CDATA '{100:x}'>{12:<!ATTLIST b>}]><a/> => is refused
<a xmlns='{100:x}'>{8:<b/>}</a> => doubles
<!DOCTYPE a [<!ATTLIST b {100:x} CDATA 'd'>]><a>{8:<b/>}</a> => is refused
<!DOCTYPE a [<!ATTLIST b c ({100:x}) #IMPLIED>]><a>{8:<b c='v'/>}</a> => doubles
)";

struct Work {
    std::size_t bytes;
    int code;
};

template <typename Parser>
Work work_of(const std::string& document, std::size_t n) {
    write_file("grown.xml", expanded(document, n));
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
std::string growth_of(const std::string& document) {
    const Work once = work_of<Parser>(document, 100);
    const Work twice = work_of<Parser>(document, 200);
    if (twice.code == qvox::QVOXException::INVALID_ENTITY_REF_ERR) return "is refused";
    return once.code + twice.code == 0 && twice.bytes < 3 * once.bytes ? "doubles" : "grows";
}

TEST(Growth, Doubled) {
    expect_rows(DOCUMENTS, growth_of<qvox::SAXParser>);
    expect_rows(DOCUMENTS, growth_of<qvox::DOMParser>);
}

}  // namespace
}  // namespace qvox_test
