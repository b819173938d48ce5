// Faults of the system below, at every point where they can come: memory that can't be had, a full
// disk, no more file handles. Whatever passes through a parse, a write or a tree
// operation then, it leaves no allocation, no open file and no lock behind.
#include <algorithm>
#include <csignal>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "faults/allocations.h"
#include "faults/child.h"
#include "support/script.h"
#include "writer/written.h"

namespace qvox_test {
namespace {

using Strings = std::vector<std::string>;

std::string repeated(const std::string& before, const std::string& after) {
    std::string out;
    for (int i = 0; i < 20; ++i) out += before + std::to_string(i) + after;
    return out;
}

// A document that has each construct once, with files, long values and many names.
void write_document() {
    write_file("faults.dtd",
               "<!ELEMENT b (#PCDATA|c)*><!ATTLIST b d (x|y) 'x' i ID #IMPLIED n CDATA #FIXED "
               "'v'>\n<!ENTITY % p '\"quoted\"'><!ENTITY q %p;><!NOTATION n PUBLIC 'p' 's'>");
    write_file("faults.ent", "<?xml encoding='utf-8'?>x<c/>\n&q;");
    write_file(
        "faults.xml",
        "<?xml version='1.0' encoding='utf-8'?>\n<!DOCTYPE a SYSTEM 'faults.dtd' [<!ENTITY e "
        "SYSTEM 'faults.ent'><!ENTITY u SYSTEM 'u' NDATA n><!--d--><?t d?><!ELEMENT a ANY>" +
            repeated("<!ENTITY i", " 'i'>") +
            "]>\n<a xmlns='u' xmlns:p='v' p:n='&lt;&q;'>&e;<!--c--><?t d?><b n='v'>" +
            repeated("<p:c", "/>") + "</b><![CDATA[t]]>\xE3\x81\x82&i3;<d" +
            repeated(" n", "='w'") + " long='" + std::string(20000, 'x') + "'/>" +
            std::string(20000, 'y') + "</a>\n");
}

std::string parse_events() {
    qvox::SAXParser parser;
    Recorder recorder;
    recorder.attach(parser);
    const FaultWindow window;
    parser.parse("faults.xml");
    return recorder.events;
}

std::string parse_tree() {
    std::optional<FaultWindow> window(std::in_place);
    const Parsed parsed("faults.xml");
    window.reset();
    return tree_text(parsed.document) + plain(parsed.document->getDoctype()->getInternalSubset());
}

std::string write_tree(const char* encoding) {
    const Parsed parsed("faults.xml");
    {
        const FaultWindow window;
        write_as(parsed.document, "written.xml", encoding);
    }
    return read_file("written.xml");
}

// Faults come to the calls alone.
class FaultyScript : public Script {
public:
    using Script::Script;
    ~FaultyScript() override { tree.document->freeRange(r); }

    qvox::Range* range(const std::string& /*word*/) override { return r; }
    std::shared_ptr<void> around_call() override { return std::make_shared<FaultWindow>(); }

private:
    qvox::Range* const r = tree.document->createRange();
};

std::string run_calls(const Row& row) {
    FaultyScript script(row[0], "e[a-long-name='and a long value']");
    try {
        script.run(row[1]);
    } catch (...) {
        // Nobody holds the document's lock, and the tree can be read.
        std::thread([&script] { script.node("a")->normalize(); }).join();
        script.state();
        throw;
    }
    return script.state();
}

// Calls on new trees.
constexpr const char* TREE_CALLS = R"~(
a => / createElementNS a-long-namespace a-long-prefix:a-long-name
a => / createAttributeNS a-long-namespace a-long-name-here
a => / createProcessingInstruction a-long-target and-its-long-data
a => / createTextNode a-long-text-here-is
a => / createDocumentType a-long-name-here a-long-public-id a-long-system-id
a => / createDocument a-long-namespace a-long-name-here null
a(#(b('a long text in it' #(c[x='y'])))) => a cloneNode true
%d a => d appendChild //; copy: d cloneNode true; copy getFirstChild
a[aa='1' ab='2' ac='3' ad='4' ae='5' af='6' ag='7' ah='8' ai='9' aj='10' ak='11' al='12' am='13'
  an='14' ao='15' ap='16' aq='17' ar='18' as='a long value at the end'] => / importNode a true
a('some text' ' and more text' b('some text' ' and more text' '') '-' '+') => a normalize
BRANCHES => a cloneNode true
BRANCHES => / importNode a true
BRANCHES => b setAttribute a-long-name-here a-long-value-here; a setAttribute first
  another-long-value-here; a setAttributeNS u p:second another-long-value-here
BRANCHES => p:d setPrefix a-prefix-that-is-long
BRANCHES => f: +#(e g); b insertBefore f long-text-one
BRANCHES => long-text-one splitText 5; t: +'aaaaaaaaaaaaaaaaaaaaaaaaaaaa'; t splitText 9
BRANCHES => long-text-one replaceData 5 3 a-long-replacement
BRANCHES => / /getElementsByTagName *; a getElementsByTagNameNS a-long-namespace a-long-name-here
BRANCHES => b getElementsByTagName c; b: a removeChild b; b free
BRANCHES => r setStart long-text-one 3; r setEnd long-text-two 3; r cloneContents
BRANCHES => r setStart long-text-one 3; r setEnd long-text-two 3; r extractContents
BRANCHES => r setStart long-text-one 3; r setEnd long-text-two 3; r deleteContents
BRANCHES => r setStart long-text-one 3; r setEnd long-text-two 3; r insertNode c
BRANCHES => r selectNodeContents b; r surroundContents +a-long-name-here
BRANCHES => f: / createDocumentFragment; f appendChild c; g: f cloneNode true; a appendChild f;
  f free; g free
BRANCHES => a setAttribute '' x; a setAttributeNS - '' x; a removeAttribute first; a setAttribute
  first y; / createElement 1
DECLARED => x: a removeAttributeNode a@i; x free; b: b; a removeChild b; b free; d: / getDoctype;
  c: d cloneNode true; c free; / appendChild e
DECLARED => / cloneNode true
DECLARED => a setAttribute first a-long-value-here; a removeAttribute first; a removeAttribute i
DECLARED => d: / getDoctype; d getInternalSubset
DECLARED => r setStart long-text-one 3; r setEnd long-text-two 3; r toString; r cloneRange
)~";

constexpr const char* BRANCHES =
    "a[first='a value of some length' {u}p:second='v'](b('long-text-one' c[z='9'] !'comment of "
    "some length') {u}p:d('long-text-two' ='and a longer CDATA section' ?target'and its data'))";
constexpr const char* DECLARED =
    "<!DOCTYPE z [<!ATTLIST a first CDATA 'a default of some length' i ID #IMPLIED><!ENTITY e "
    "'an entity of some length'><!NOTATION n SYSTEM 'a system identifier'>]><a i='the-identifier'>"
    "<b>long-text-one<c/></b><d>long-text-two</d></a>";

std::string make_walks() {
    Tree tree("a(b)");
    {
        const FaultWindow window;
        qvox::Document& document = *tree.document;
        document.freeNodeIterator(document.createNodeIterator(tree.document, 1, nullptr, true));
        document.freeTreeWalker(document.createTreeWalker(tree.document, 1, nullptr, true));
    }
    return tree.text();
}

struct Fault {
    std::function<void(long)> begin;
    std::function<bool()> end;
};

// The scenario with the first such fault, the second and so on, up to a run that doesn't meet one.
// What comes of the faulty runs begins with one of `outcomes`; no run leaves anything behind.
void expect_harmless(const Scenario& scenario, const Fault& fault, const Strings& outcomes) {
    std::string expected;
    output_of([&] {
        scenario();  // what the process does once is done from here on
        expected = scenario();
    });
    std::string damages;
    long n = 1;
    for (;; ++n) {
        const FaultyRun run = run_with_fault(
            scenario, expected, [&] { fault.begin(n); }, fault.end);
        if (!run.damage.empty()) damages += std::to_string(n) + ": " + run.damage + '\n';
        if (!run.hadFault) break;
        const bool isExpected =
            std::any_of(outcomes.begin(), outcomes.end(), [&run](const std::string& start) {
                return run.outcome.compare(0, start.size(), start) == 0;
            });
        if (!isExpected) {
            damages += std::to_string(n) + ": " + run.outcome.substr(0, 200) + '\n';
        }
    }
    EXPECT_TRUE(n > 1 || !countsMalloc);  // else nodes are the sanitizer's
    EXPECT_EQ(damages, "") << "of faults 1 to " << n - 1;
}

const Fault noMemory = {[](long n) { fail_allocation(Allocator::OPERATOR_NEW, n); },
                        [] {
                            const bool failed = allocation_failed();
                            fail_allocation(Allocator::OPERATOR_NEW, 0);
                            return failed;
                        }};

rlimit limitsBefore;

void limit(__rlimit_resource resource, rlim_t most) {
    getrlimit(resource, &limitsBefore);
    const rlimit few{most, limitsBefore.rlim_max};
    setrlimit(resource, &few);
}

class Faults : public testing::Test {
protected:
    Faults() {
        write_document();
        EXPECT_EQ(parse_file("faults.xml").message, "");
    }
};

TEST_F(Faults, MemoryOfParses) {
    expect_harmless(parse_events, noMemory, {"bad_alloc"});
    expect_harmless(parse_tree, noMemory, {"bad_alloc"});
    write_file("broken.xml", read_file("faults.xml").substr(0, 1400));
    const auto parse_broken = [] {
        const FaultWindow window;
        return raised_by([] { const Parsed parsed("broken.xml"); });
    };
    expect_harmless(parse_broken, noMemory, {"bad_alloc"});
}

// What the scenario needs only with malloc ends the process; a file may be one that can't be
// opened.
TEST_F(Faults, MemoryOfMalloc) {
    if (!countsMalloc) GTEST_SKIP() << "malloc is the sanitizer's";
    const Fault fault = {[](long n) { fail_allocation(Allocator::MALLOC, n); }, noMemory.end};
    expect_harmless([] { return write_tree("UTF-16"); }, fault,
                    {"bad_alloc", "same result", "exception 1 ", "fatal malloc failed : size ="});
}

TEST_F(Faults, MemoryOfWrites) {
    for (const char* const encoding : {"UTF-16", "EUC-JP"}) {
        expect_harmless([&] { return write_tree(encoding); }, noMemory, {"bad_alloc"});
    }
}

TEST_F(Faults, MemoryOfTreeCalls) {
    for (Row row : rows_of(TREE_CALLS)) {
        if (row[0] == "BRANCHES") row[0] = BRANCHES;
        if (row[0] == "DECLARED") row[0] = DECLARED;
        SCOPED_TRACE(row[1]);
        expect_harmless([&row] { return run_calls(row); }, noMemory, {"bad_alloc", "same result"});
    }
    expect_harmless(make_walks, noMemory, {"bad_alloc"});
}

// No handle for the document; none for its external files, which are warned of.
TEST_F(Faults, NoMoreHandles) {
    if (!countsMalloc) GTEST_SKIP() << "the sanitizers need file handles themselves";
    static long handles = 0;
    const Fault fault = {[](long n) {
                             handles = n - 1;
                             const int next = dup(0);
                             close(next);
                             limit(RLIMIT_NOFILE, static_cast<rlim_t>(next + handles));
                         },
                         [] {
                             setrlimit(RLIMIT_NOFILE, &limitsBefore);
                             return handles < 2;
                         }};
    expect_harmless(parse_events, fault,
                    {"exception 1 'file (faults.xml) cannot open'",
                     "result startDocument; startDTD 'a' - 'faults.dtd'; externalEntityDecl"});
}

// A disk that takes n - 1 bytes.
TEST_F(Faults, FullDisk) {
    const auto size = static_cast<long>(write_tree("EUC-JP").size());
    const Fault fault = {[size](long n) {
                             std::signal(SIGXFSZ, SIG_IGN);
                             limit(RLIMIT_FSIZE, static_cast<rlim_t>(n < 5 ? n - 1 : size + n - 8));
                         },
                         [size] {
                             setrlimit(RLIMIT_FSIZE, &limitsBefore);
                             return static_cast<long>(read_file("written.xml").size()) < size;
                         }};
    expect_harmless([] { return write_tree("EUC-JP"); }, fault, {"exception 2 'file write fail'"});
}

}  // namespace
}  // namespace qvox_test
