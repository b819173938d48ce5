// Faults of the system below, at every point where they can come: memory that can't be had, reads
// that fail, a full disk, no more file handles. Whatever passes through a parse, a write or a tree
// operation then, it leaves no allocation, no open file and no lock behind.
#include <algorithm>
#include <csignal>
#include <functional>
#include <memory>
#include <string>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "faults/allocations.h"
#include "faults/child.h"
#include "faults/failing_reads.h"
#include "support/tree_text.h"

namespace qvox_test {
namespace {

using Strings = std::vector<std::string>;

std::string repeated(int count, const std::string& before, const std::string& after) {
    std::string out;
    for (int i = 0; i < count; ++i) out += before + std::to_string(i) + after;
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
            repeated(20, "<!ENTITY i", " 'i'>") +
            "]>\n<a xmlns='u' xmlns:p='v' p:n='&lt;&q;'>&e;<!--c--><?t d?><b n='v'>" +
            repeated(20, "<p:c", "/>") + "</b><![CDATA[t]]>\xE3\x81\x82&i3;<d" +
            repeated(20, " n", "='w'") + " long='" + std::string(20000, 'x') + "'/>" +
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

struct Document {
    mutable qvox::DOMParser parser;
    qvox::Document* tree = nullptr;

    explicit Document(const char* file) { tree = parser.parse(file); }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    ~Document() { parser.free(tree); }
};

std::string parse_tree() {
    qvox::Document* tree = nullptr;
    qvox::DOMParser parser;
    {
        const FaultWindow window;
        tree = parser.parse("faults.xml");
    }
    std::string text = tree_text(tree) + plain(tree->getDoctype()->getInternalSubset());
    parser.free(tree);
    return text;
}

std::string write_tree(const char* encoding) {
    const Document document("faults.xml");
    {
        const FaultWindow window;
        document.parser.write(document.tree, "written.xml", encoding);
    }
    return read_file("written.xml");
}

struct TreeCall {
    const char* name;
    const char* tree;
    std::function<qvox::Node*(Tree&)> call;
};

qvox::Range* range_over(Tree& tree, const char* start, int startOffset, const char* end,
                        int endOffset) {
    qvox::Range* const range = tree.document->createRange();
    range->setStart(tree[start], startOffset);
    range->setEnd(tree[end], endOffset);
    return range;
}

// Calls `action` on a range, which is freed in any case.
qvox::Node* with_range(Tree& tree, const std::function<qvox::Node*(qvox::Range&)>& action) {
    const auto freed = [&tree](qvox::Range* range) { tree.document->freeRange(range); };
    const std::unique_ptr<qvox::Range, decltype(freed)> range(
        range_over(tree, "long-text-one", 3, "long-text-two", 3), freed);
    return action(*range);
}

qvox::Element& element(Tree& tree, const char* name) {
    return *static_cast<qvox::Element*>(tree[name]);
}

const char* const BRANCHES =
    "a[first='a value of some length' {u}p:second='v'](b('long-text-one' c[z='9'] !'comment of "
    "some length') {u}p:d('long-text-two' ='and a longer CDATA section' ?target'and its data'))";
const char* const DECLARED =
    "<!DOCTYPE z [<!ATTLIST a first CDATA 'a default of some length' i ID #IMPLIED><!ENTITY e "
    "'an entity of some length'><!NOTATION n SYSTEM 'a system identifier'>]><a i='the-identifier'>"
    "<b>long-text-one<c/></b><d>long-text-two</d></a>";

const TreeCall treeCalls[] = {
    {"createElementNS", "a",
     [](Tree& t) {
         return t.document->createElementNS("a-long-namespace", "a-long-prefix:a-long-name");
     }},
    {"createAttributeNS", "a",
     [](Tree& t) { return t.document->createAttributeNS("a-long-namespace", "a-long-name"); }},
    {"createProcessingInstruction", "a",
     [](Tree& t) {
         return t.document->createProcessingInstruction("a-long-target", "and-its-long-data");
     }},
    {"createTextNode", "a", [](Tree& t) { return t.document->createTextNode("a-long-text-here"); }},
    {"createDocumentType", "a",
     [](Tree& t) {
         return t.document->getImplementation()->createDocumentType(
             "a-long-name-here", "a-long-public-id", "a-long-system-id");
     }},
    {"createDocument", "a",
     [](Tree& t) -> qvox::Node* {
         qvox::DOMImplementation& all = *t.document->getImplementation();
         all.freeDocument(all.createDocument("a-long-namespace", "a-long-name-here", nullptr));
         return nullptr;
     }},
    {"cloneNode", BRANCHES, [](Tree& t) { return t["a"]->cloneNode(true); }},
    {"cloneNode of a fragment in a fragment", "a(#(b('a long text in it' #(c[x='y']))))",
     [](Tree& t) { return t["a"]->cloneNode(true); }},
    {"cloneNode of a document", DECLARED,
     [](Tree& t) -> qvox::Node* {
         t.parser.free(static_cast<qvox::Document*>(t.document->cloneNode(true)));
         return nullptr;
     }},
    {"cloneNode of a document type with a document", "a",
     [](Tree& t) {
         qvox::DOMImplementation& all = *t.document->getImplementation();
         const auto freed = [&all](qvox::Document* document) { all.freeDocument(document); };
         const std::unique_ptr<qvox::Document, decltype(freed)> document(
             all.createDocument({}, "a-long-name-here", nullptr), freed);
         document->getDocumentElement()->setAttribute("a-long-name", "a-long-value-here");
         qvox::Node* const type = t.drop(all.createDocumentType("a-long-name", {}, {}));
         type->appendChild(document.get());
         qvox::Node* const copy = type->cloneNode(true);
         all.freeDocument(static_cast<qvox::Document*>(copy->getFirstChild()));
         return copy;
     }},
    {"importNode", BRANCHES, [](Tree& t) { return t.document->importNode(t["a"], true); }},
    {"importNode of many attributes",
     "a[aa='1' ab='2' ac='3' ad='4' ae='5' af='6' ag='7' ah='8' ai='9' aj='10' ak='11' al='12' "
     "am='13' an='14' ao='15' ap='16' aq='17' ar='18' as='a long value at the end']",
     [](Tree& t) { return t.document->importNode(t["a"], true); }},
    {"setAttribute", BRANCHES,
     [](Tree& t) -> qvox::Node* {
         element(t, "b").setAttribute("a-long-name-here", "a-long-value-here");
         element(t, "a").setAttribute("first", "another-long-value-here");
         element(t, "a").setAttributeNS("u", "p:second", "another-long-value-here");
         return nullptr;
     }},
    {"removeAttribute", DECLARED,
     [](Tree& t) -> qvox::Node* {
         element(t, "a").setAttribute("first", "a-long-value-here");
         element(t, "a").removeAttribute("first");
         element(t, "a").removeAttribute("i");
         return nullptr;
     }},
    {"setPrefix", BRANCHES,
     [](Tree& t) -> qvox::Node* {
         t["p:d"]->setPrefix("a-prefix-that-is-long");
         return nullptr;
     }},
    {"insertBefore", BRANCHES,
     [](Tree& t) {
         qvox::Node* const fragment = t.drop(t.document->createDocumentFragment());
         fragment->appendChild(t["c"]);
         fragment->appendChild(t["p:d"]);
         return t["b"]->insertBefore(fragment, t["b"]->getFirstChild());
     }},
    {"splitText", BRANCHES,
     [](Tree& t) -> qvox::Node* {
         static_cast<qvox::Text*>(t["long-text-one"])->splitText(5);
         return t.drop(t.document->createTextNode("aaaaaaaaaaaaaaaaaaaaaaaa"))->splitText(9);
     }},
    {"replaceData", BRANCHES,
     [](Tree& t) -> qvox::Node* {
         static_cast<qvox::Text*>(t["long-text-one"])->replaceData(5, 3, "a-long-replacement");
         return nullptr;
     }},
    {"normalize", "a('some text' ' and more text' b('some text' ' and more text' '') '-' '+')",
     [](Tree& t) -> qvox::Node* {
         t["a"]->normalize();
         return nullptr;
     }},
    {"getElementsByTagName", BRANCHES,
     [](Tree& t) -> qvox::Node* {
         t.document->getElementsByTagName("*");
         element(t, "a").getElementsByTagNameNS("a-long-namespace", "a-long-name-here");
         t.parser.free(element(t, "b").getElementsByTagName("c"));
         return nullptr;
     }},
    {"freeNode of what was searched", BRANCHES,
     [](Tree& t) -> qvox::Node* {
         element(t, "b").getElementsByTagName("c");
         t.parser.freeNode(t["a"]->removeChild(t["b"]));
         return nullptr;
     }},
    {"getElementById", DECLARED,
     [](Tree& t) -> qvox::Node* {
         t.document->getElementById("the-identifier");
         return nullptr;
     }},
    {"getInternalSubset", DECLARED,
     [](Tree& t) -> qvox::Node* {
         t.document->getDoctype()->getInternalSubset();
         return nullptr;
     }},
    {"walks", BRANCHES,
     [](Tree& t) -> qvox::Node* {
         t.document->freeNodeIterator(t.document->createNodeIterator(t["a"], 1, nullptr, true));
         t.document->freeTreeWalker(t.document->createTreeWalker(t["a"], 1, nullptr, true));
         return nullptr;
     }},
    {"cloneContents", BRANCHES,
     [](Tree& t) { return with_range(t, [](qvox::Range& r) { return r.cloneContents(); }); }},
    {"extractContents", BRANCHES,
     [](Tree& t) { return with_range(t, [](qvox::Range& r) { return r.extractContents(); }); }},
    {"deleteContents", BRANCHES,
     [](Tree& t) {
         return with_range(t, [](qvox::Range& r) -> qvox::Node* {
             r.deleteContents();
             return nullptr;
         });
     }},
    {"insertNode", BRANCHES,
     [](Tree& t) {
         return with_range(t, [&t](qvox::Range& r) -> qvox::Node* {
             r.insertNode(t["c"]);
             return nullptr;
         });
     }},
    {"surroundContents", BRANCHES,
     [](Tree& t) {
         return with_range(t, [&t](qvox::Range& r) -> qvox::Node* {
             r.selectNodeContents(t["b"]);
             r.surroundContents(t.drop(t.document->createElement("a-long-name-here")));
             return nullptr;
         });
     }},
    {"toString", DECLARED,
     [](Tree& t) {
         return with_range(t, [&t](qvox::Range& r) -> qvox::Node* {
             r.toString();
             t.document->freeRange(r.cloneRange());
             return nullptr;
         });
     }},
};

std::string run_call(const TreeCall& row) {
    Tree tree(row.tree);
    try {
        qvox::Node* made = nullptr;
        {
            const FaultWindow window;
            made = row.call(tree);
        }
        tree.drop(made);
    } catch (...) {
        // Nobody holds the document's lock, and the tree can be read.
        std::thread([&tree] { tree["a"]->normalize(); }).join();
        tree.text();
        throw;
    }
    return tree.text();
}

struct Fault {
    std::function<void(long)> begin;
    std::function<bool()> end;
};

bool begins_with_one(const std::string& text, const Strings& beginnings) {
    return std::any_of(beginnings.begin(), beginnings.end(), [&text](const std::string& beginning) {
        return text.compare(0, beginning.size(), beginning) == 0;
    });
}

// The scenario with the first such fault, the second and so on, up to a run that doesn't meet one.
// What comes of the faulty runs begins with one of `outcomes`.
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
        if (!run.hadFault) break;
        if (!begins_with_one(run.outcome, outcomes)) {
            damages += std::to_string(n) + ": " + run.outcome.substr(0, 200) + '\n';
        }
        if (!run.damage.empty()) damages += std::to_string(n) + ": " + run.damage + '\n';
    }
    EXPECT_GT(n, 1);
    EXPECT_EQ(damages, "") << "of faults 1 to " << n - 1;
}

const Fault noMemory = {[](long n) { fail_allocation(Allocator::OPERATOR_NEW, n); },
                        [] {
                            const bool failed = allocation_failed();
                            fail_allocation(Allocator::OPERATOR_NEW, 0);
                            return failed;
                        }};

const Fault brokenDisk = {fail_read, [] {
                              const bool failed = read_failed();
                              fail_read(0);
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
    for (const TreeCall& row : treeCalls) {
        SCOPED_TRACE(row.name);
        expect_harmless([&row] { return run_call(row); }, noMemory, {"bad_alloc", "same result"});
    }
}

TEST_F(Faults, BrokenDisk) {
    expect_harmless(parse_events, brokenDisk, {"exception 1 'file (faults."});
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
