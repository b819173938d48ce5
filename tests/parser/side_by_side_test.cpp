// Parses beside each other and inside each other, with and without turns. The preset tsan runs
// these tests under the thread sanitizer.
#include <atomic>
#include <functional>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "support/recorder.h"

namespace qvox_test {
namespace {

using qvox::DOMParser;
using qvox::FEATURE_CONCURRENT;
using qvox::QVOXException;
using qvox::SAXParser;

// Counts what it hears, and that it hears it on the thread of its parse.
struct Listener : qvox::DefaultHandler {
    explicit Listener(SAXParser& parser) {
        parser.setContentHandler(this);
        parser.setErrorHandler(this);
    }
    void startElement(const qvox::Xstring&, const qvox::Xstring&, const qvox::Xstring&,
                      const qvox::Attributes&) override {
        note("(");
        if (inside && events.size() == 1) inside();
    }
    void characters(const qvox::Xstring& text) override { note(text.utf8()); }
    void error(const qvox::SAXParseException& exception) override {
        note("error " + std::to_string(exception.getLineNumber()));
    }
    void warning(const qvox::SAXParseException&) override { note("warning"); }
    void note(const std::string& event) {
        EXPECT_EQ(std::this_thread::get_id(), thread);
        events += event;
    }

    std::function<void()> inside;  // called at the root's start
    std::string events;
    std::thread::id thread = std::this_thread::get_id();
};

// "ok", or the code and message of the exception.
std::string result_of(const std::function<void()>& parse) {
    try {
        parse();
        return "ok";
    } catch (const QVOXException& exception) {
        return std::to_string(exception.getCode()) + " " + exception.getMessage().utf8();
    }
}

class SideBySide : public testing::Test {
protected:
    SideBySide() {
        write_file("good.xml", "<?xml version='1.0' encoding='Shift_JIS'?>\n<a>\x83\x5C&e;</a>");
        write_file("bad.xml", "<a>\n</b>");
    }
};

TEST_F(SideBySide, ParsesInsideParses) {
    const std::string refused = "5 parse already running";
    const struct {
        bool outer;
        bool inner;
        std::string result;
    } cases[] = {
        {false, false, refused}, {false, true, "ok"}, {true, true, "ok"}, {true, false, "ok"}};
    for (const auto& [outer, inner, result] : cases) {
        SAXParser parser;
        parser.setFeature(FEATURE_CONCURRENT, outer);
        SAXParser nested;
        nested.setFeature(FEATURE_CONCURRENT, inner);
        Listener listener(parser);
        Listener nestedListener(nested);
        listener.inside = [&, &expected = result] {
            EXPECT_EQ(result_of([&] { nested.parse("good.xml"); }), expected);
            EXPECT_EQ(result_of([&] { nested.parse("none.xml"); }),
                      expected == "ok" ? "1 file (none.xml) cannot open" : refused);
            EXPECT_EQ(result_of([&] { parser.parse("good.xml"); }), refused);
            EXPECT_TRUE(parser.isParsing() && !nested.isParsing());
            EXPECT_TRUE(parser.getInputSource()->getSystemId() == "good.xml");
        };
        EXPECT_EQ(result_of([&] { parser.parse("good.xml"); }), "ok");
        // A refusal is told to the parse that is running, a file that can't be opened to nobody.
        EXPECT_EQ(listener.events,
                  result == "ok" ? "(error 2warningソ" : "(error 2error 2error 2warningソ");
        EXPECT_EQ(nestedListener.events, result == "ok" ? "(warningソ" : "");
    }
}

TEST_F(SideBySide, ReportsStayOnTheirThread) {
    SAXParser parser;
    Listener listener(parser);
    DOMParser trees;
    listener.inside = [&] {
        std::thread([&] {
            qvox::Document* const document = trees.createDocument();
            qvox::Node* const root = document->appendChild(document->createElement("a"));
            EXPECT_EQ(result_of([&] { trees.freeNode(root); }),
                      "4 attempt to free node with parent");
            EXPECT_EQ(result_of([&] { trees.write(document, "no/such/folder"); }),
                      "1 file (no/such/folder) cannot open");
            trees.free(document);
        }).join();
    };
    parser.parse("good.xml");
    EXPECT_EQ(listener.events, "(warningソ");
}

TEST_F(SideBySide, EightThreads) {
    const auto work = [](int which) {
        for (int i = 0; i < 20; ++i) {
            SAXParser parser;
            parser.setFeature(FEATURE_CONCURRENT, (which + i) % 2 == 0);
            Listener listener(parser);
            DOMParser trees;
            trees.setFeature(FEATURE_CONCURRENT, true);
            int size = 0;
            listener.inside = [&] {
                qvox::Document* const document = trees.parse("good.xml");
                trees.write(document, nullptr, &size);
                trees.free(document);
            };
            EXPECT_EQ(result_of([&] { parser.parse("good.xml"); }), "ok");
            EXPECT_EQ(listener.events + std::to_string(size), "(warningソ96");
            EXPECT_EQ(result_of([&] { parser.parse("bad.xml"); }),
                      "10 end tag (b) not match to start tag (a)");
            EXPECT_EQ(result_of([&] { trees.parse("none.xml"); }), "1 file (none.xml) cannot open");
        }
    };
    std::vector<std::thread> threads;
    for (int which = 0; which < 8; ++which) threads.emplace_back(work, which);
    for (std::thread& thread : threads) thread.join();
}

// Without the feature a parse waits for the one on another thread.
TEST_F(SideBySide, Turns) {
    std::atomic<bool> isHeard{false};
    std::thread other;
    SAXParser parser;
    Listener listener(parser);
    listener.inside = [&] {
        other = std::thread([&isHeard] {
            SAXParser second;
            Listener secondListener(second);
            secondListener.inside = [&isHeard] { isHeard = true; };
            second.parse("good.xml");
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        EXPECT_FALSE(isHeard);
    };
    parser.parse("good.xml");
    other.join();
    EXPECT_TRUE(isHeard);
}

}  // namespace
}  // namespace qvox_test
