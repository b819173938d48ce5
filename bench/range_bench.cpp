// The section "range": how many calls of a range a second there are in documents of a hundred
// thousand nodes, one wide and one deep. What is asked for is that setting points costs nothing
// like a walk through such a document.
#include <chrono>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <qvox/qvox.h>

#include "sections.h"
#include "table.h"

namespace bench {
namespace {

constexpr double asked = 5'000;
constexpr std::chrono::milliseconds measureTime(200);

/// A document whose texts are all in paragraphs of their own, or all siblings.
class RangeDocument {
public:
    RangeDocument(int chapters, int sections, int paragraphs) {
        qvox::Node* const root = append(document, "book");
        for (int i = 0; i < chapters; ++i) {
            qvox::Node* const chapter = chapters == 1 ? root : append(root, "chapter");
            for (int j = 0; j < sections; ++j) {
                qvox::Node* const section = sections == 1 ? chapter : append(chapter, "section");
                for (int k = 0; k < paragraphs; ++k) addParagraph(section, chapters > 1);
            }
        }
    }
    RangeDocument(const RangeDocument&) = delete;
    RangeDocument& operator=(const RangeDocument&) = delete;
    ~RangeDocument() {
        document->freeRange(range);
        document->freeRange(other);
        parser.free(document);
    }

    /// A number below `count`; for one document always the same sequence of them.
    std::size_t next(std::size_t count) { return engine() % count; }
    qvox::Node* randomText() { return texts[next(texts.size())]; }

    qvox::DOMParser parser;
    qvox::Document* const document = parser.createDocument();
    qvox::Range* const range = document->createRange();
    qvox::Range* const other = document->createRange();
    std::vector<qvox::Node*> texts;

private:
    std::mt19937 engine;

    qvox::Node* append(qvox::Node* parent, const char* name) {
        return parent->appendChild(document->createElement(name));
    }

    void addParagraph(qvox::Node* section, bool isOwnParent) {
        qvox::Node* const paragraph = append(section, "p");
        qvox::Node* const parent = isOwnParent ? paragraph : section;
        texts.push_back(parent->appendChild(document->createTextNode("twelve units")));
    }
};

struct RangeCase {
    const char* label;
    std::function<void(RangeDocument&)> call;
    bool isCommon;  // one that has to reach the rate that is asked for
};

/// The point that is set and the other one are as the label says.
const RangeCase cases[] = {
    {"setStart, setEnd in one text",
     [](RangeDocument& one) {
         one.range->setStart(one.texts[0], 3);
         one.range->setEnd(one.texts[0], 5);
     },
     true},
    {"setStart, setEnd in one element",
     [](RangeDocument& one) {
         qvox::Node* const parent = one.texts[0]->getParentNode();
         one.range->setStart(parent, 0);
         one.range->setEnd(parent, 1);
     },
     true},
    {"setStart, setEnd in texts next to each other",
     [](RangeDocument& one) {
         const std::size_t first = one.next(one.texts.size() - 1);
         one.range->setStart(one.texts[first], 3);
         one.range->setEnd(one.texts[first + 1], 5);
     },
     true},
    {"setStart, setEnd in any two texts",
     [](RangeDocument& one) {
         one.range->setStart(one.randomText(), 3);
         one.range->setEnd(one.randomText(), 5);
     },
     true},
    {"setStartBefore, setEndAfter of any text",
     [](RangeDocument& one) {
         qvox::Node* const text = one.randomText();
         one.range->setStartBefore(text);
         one.range->setEndAfter(text);
     },
     true},
    {"selectNodeContents, compareBoundaryPoints",
     [](RangeDocument& one) {
         one.range->selectNodeContents(one.randomText());
         one.range->compareBoundaryPoints(qvox::Range::END_TO_END, one.other);
     },
     true},
    {"selectNode, cloneContents of any text",
     [](RangeDocument& one) {
         one.range->selectNode(one.randomText());
         one.parser.freeNode(one.range->cloneContents());
     },
     false},
    {"extractContents, insertNode of any text",
     [](RangeDocument& one) {
         const std::size_t at = one.next(one.texts.size());
         one.range->selectNode(one.texts[at]);
         qvox::Node* const fragment = one.range->extractContents();
         one.parser.freeNode(one.texts[at]);
         one.texts[at] = fragment->getFirstChild();
         one.range->insertNode(fragment);
         one.parser.freeNode(fragment);
     },
     false},
};

/// Calls a second.
double rate(const RangeCase& measured, RangeDocument& document) {
    using Clock = std::chrono::steady_clock;
    constexpr int batch = 16;
    long calls = 0;
    const Clock::time_point start = Clock::now();
    Clock::duration spent{};
    do {
        for (int i = 0; i < batch; ++i) measured.call(document);
        calls += batch;
        spent = Clock::now() - start;
    } while (spent < measureTime);
    return static_cast<double>(2 * calls) / std::chrono::duration<double>(spent).count();
}

}  // namespace

bool printRanges(const Settings& settings, std::ostream& stream) {
    RangeDocument wide(1, 1, 50'000);
    RangeDocument deep(50, 50, 20);
    bool allMet = true;
    Table table(
        stream,
        {"Range calls a second in 100,000 nodes", "all siblings", "in sections", "at least"}, 44);
    for (const RangeCase& one : cases) {
        if (!settings.wants(one.label)) continue;
        std::vector<std::string> cells = {one.label};
        for (RangeDocument* const document : {&wide, &deep}) {
            document->other->selectNodeContents(document->texts[document->texts.size() / 2]);
            const double calls = rate(one, *document);
            cells.push_back(cell(calls, 0));
            allMet = allMet && (!one.isCommon || calls >= asked);
        }
        cells.push_back(one.isCommon ? cell(asked, 0) : "");
        table.row(cells);
    }
    return allMet;
}

}  // namespace bench
