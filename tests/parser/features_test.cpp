// Features and properties, sources, and what handlers may do during a parse.
#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>

#include "support/recorder.h"

namespace qvox_test {
namespace {

using qvox::QVOXException;
using qvox::SAXParser;
using Action = std::function<void()>;

// The message of a refusal, or "done".
std::string result_of(const Action& action) {
    try {
        action();
        return "done";
    } catch (const qvox::SAXException& exception) {
        const bool isUnknown = exception.getCode() == QVOXException::FEATURE_NOT_RECOGNIZED_ERR;
        EXPECT_EQ(quoted(exception.toString()),
                  isUnknown ? "'<SAXNotRecognizedException>'" : "'<SAXNotSupportedException>'");
        return quoted(exception.getMessage());
    }
}

// Parses <a><b/></a> and runs `action` inside <b>. Returns the events.
std::string inside_parse(SAXParser& parser, const Action& action) {
    write_file("ab.xml", "<a><b/></a>");
    Recorder recorder;
    recorder.when("startElement - 'b'", action);
    recorder.attach(parser);
    const Outcome outcome = observe([&] { parser.parse("ab.xml"); }, &recorder);
    EXPECT_EQ(outcome.message, "");
    return joined(outcome.events);
}

TEST(Features, Access) {
    SAXParser parser;
    for (const std::string feature :
         {qvox::FEATURE_NAMESPACES, qvox::FEATURE_NAMESPACE_PREFIXES, qvox::FEATURE_VALIDATION,
          qvox::FEATURE_EXTERNAL_GENERAL_ENTITIES, qvox::FEATURE_EXTERNAL_PARAMETER_ENTITIES,
          qvox::FEATURE_EXTERNAL_FILES, qvox::FEATURE_CONCURRENT}) {
        const char* const name = feature.c_str();
        const bool isFixed = feature == qvox::FEATURE_VALIDATION;
        EXPECT_EQ(parser.getFeature(name), !isFixed &&
                                               feature != qvox::FEATURE_NAMESPACE_PREFIXES &&
                                               feature != qvox::FEATURE_CONCURRENT);
        for (const bool value : {false, true}) {
            EXPECT_EQ(result_of([&] { parser.setFeature(name, value); }),
                      isFixed ? "'feature " + feature + " is not supported'" : "done");
            EXPECT_EQ(parser.getFeature(name), value && !isFixed);
        }
        inside_parse(parser, [&] {
            EXPECT_EQ(result_of([&] { parser.setFeature(name, false); }),
                      "'feature " + feature + " is not supported in parsing'");
            EXPECT_EQ(parser.getFeature(name), !isFixed);
        });
    }
    inside_parse(parser, [&] {
        for (const std::string name : {"", "Http://xml.org/sax/features/namespaces", "namespaces",
                                       "http://xml.org/sax/features/namespaces/"}) {
            const std::string message = "'feature " + name + " not recognized'";
            EXPECT_EQ(result_of([&] { parser.getFeature(name.c_str()); }), message);
            EXPECT_EQ(result_of([&] { parser.setFeature(name.c_str(), true); }), message);
        }
    });
    const std::string longName(1000, 'x');
    EXPECT_LE(result_of([&] { parser.getFeature(longName.c_str()); }).size(), 255u + 2);
}

TEST(Features, Properties) {
    SAXParser parser;
    Recorder recorder;
    const auto* const lexical = static_cast<const qvox::LexicalHandler*>(&recorder);
    const auto* const declarations = static_cast<const qvox::DeclHandler*>(&recorder);
    EXPECT_EQ(parser.getProperty(qvox::PROPERTY_LEXICAL_HANDLER), nullptr);
    EXPECT_EQ(parser.getProperty(qvox::PROPERTY_DECL_HANDLER), nullptr);
    recorder.attach(parser);
    EXPECT_EQ(parser.getProperty(qvox::PROPERTY_LEXICAL_HANDLER), lexical);
    EXPECT_EQ(parser.getProperty(qvox::PROPERTY_DECL_HANDLER), declarations);
    EXPECT_EQ(parser.getEntityResolver(), &recorder);
    const auto expect_refusals = [&](const std::string& when) {
        const std::string node = qvox::PROPERTY_DOM_NODE;
        const std::string unknown = "'property x not recognized'";
        EXPECT_EQ(result_of([&] { parser.getProperty("x"); }), unknown);
        EXPECT_EQ(result_of([&] { parser.setProperty("x", lexical); }), unknown);
        const std::string tail = "property " + node + " is not supported" + when + "'";
        EXPECT_EQ(result_of([&] { parser.getProperty(node.c_str()); }), "'" + tail);
        EXPECT_EQ(result_of([&] { parser.setProperty(node.c_str(), lexical); }), "'to set " + tail);
    };
    expect_refusals("");
    inside_parse(parser, [&] { expect_refusals(" in parsing"); });
}

TEST(Features, HandlersChangeAtTheNextEvent) {
    write_file("change.xml", "<a>x<!--1--><b/><!--2-->&lt;&u;</a>");
    SAXParser parser;
    Recorder other;
    Recorder recorder;
    recorder.when("startElement - 'b'", [&] {
        parser.setContentHandler(&other);
        parser.setProperty(qvox::PROPERTY_LEXICAL_HANDLER, nullptr);
        parser.setErrorHandler(nullptr);
    });
    recorder.attach(parser);
    const Outcome outcome = observe([&] { parser.parse("change.xml"); }, &recorder);
    EXPECT_EQ(joined(outcome.events),
              "startDocument; startElement - 'a' 'a'; characters 'x'; "
              "comment '1'; startElement - 'b' 'b'");
    EXPECT_EQ(joined(other.events),
              "endElement - 'b' 'b'; characters '<'; endElement - 'a' 'a'; endDocument");
    EXPECT_EQ(outcome.output, "QVOX warning : entity name (u) not found\n");

    // The mappings of a tag are one event, and so is their end.
    write_file("change.xml", "<a xmlns:p='1' xmlns:q='2'/>");
    for (const std::string event : {"startPrefixMapping", "endPrefixMapping"}) {
        Recorder first;
        first.when(event + " 'p'", [&] { parser.setContentHandler(nullptr); });
        first.attach(parser);
        parser.parse("change.xml");
        EXPECT_NE(first.events.find(event + " 'q'"), std::string::npos);
        EXPECT_EQ(first.events.find("endDocument"), std::string::npos);
    }
}

TEST(Features, FileNames) {
    write_file("source.xml", "<a/>");
    write_file("\x95\\.xml", "<a/>");
    for (const char* name : {"source.xml", "file:source.xml", "\x95\\.xml"}) {
        EXPECT_EQ(parse_file(name).message, "");
    }
    for (const char* name : {"FILE:source.xml", "file:file:source.xml", "none.xml", "", "\x95\x5F",
                             static_cast<const char*>(nullptr)}) {
        Recorder recorder;
        SAXParser parser;
        recorder.attach(parser);
        const Outcome outcome = observe([&] { parser.parse(name); }, &recorder);
        const std::string shown = name != nullptr ? name : "(null)";
        EXPECT_EQ(outcome.output, "QVOX error : file (" + shown + ") cannot open\n");
        EXPECT_EQ(outcome.code, QVOXException::FILE_OPEN_ERR);
        EXPECT_EQ(outcome.events, "");
        EXPECT_FALSE(parser.isParsing());
    }
}

// An error is told with the identifiers of the source, whose encoding has no part in the parse.
TEST(Features, InputSources) {
    struct Identifiers : qvox::DefaultHandler {
        void error(const qvox::SAXParseException& exception) override {
            told = quoted(exception.toString()) + ' ' + quoted(exception.getPublicId()) + ' ' +
                   quoted(exception.getSystemId());
        }
        std::string told;
    } identifiers;
    write_file("bad.xml", "<a>\xE3\x81\x82</a>x");
    qvox::InputSource source("bad.xml");
    EXPECT_TRUE(source.getPublicId().isNull() && source.getEncoding().isNull());
    source.setEncoding("EUC-JP");
    SAXParser parser;
    parser.setErrorHandler(&identifiers);
    for (const std::string id : {"-", "'-//P'"}) {
        EXPECT_EQ(observe([&] { parser.parse(source); }).message,
                  "bad.xml : parse error (x) at line 1, col 11");
        EXPECT_EQ(identifiers.told, "'<SAXParseException::SYNTAX_ERR>' " + id + " 'bad.xml'");
        source.setPublicId("-//P");
    }
    qvox::InputSource nameless;
    EXPECT_EQ(observe([&] { parser.parse(nameless); }).message, "file () cannot open");
    EXPECT_EQ(observe([&] { qvox::DOMParser().parse(nameless); }).message, "file () cannot open");
}

// Whatever of the family a handler throws reaches the caller as a plain exception; others pass as
// they are.
TEST(Features, ExceptionsOfHandlers) {
    const std::pair<Action, const char*> exceptions[] = {
        {[] { throw QVOXException(QVOXException::ALLOC_ERR, "m"); }, "3m-"},
        {[] { throw qvox::SAXNotSupportedException("m"); }, "14m'<SAXNotSupportedException>'"},
        {[] { throw qvox::RangeException(qvox::RangeException::INVALID_NODE_TYPE_ERR, "m"); },
         "16m'<RangeException::INVALID_NODE_TYPE_ERR>'"},
    };
    write_file("throw.xml", "<a>x<b/><!--c--><?p?>&lt;&u;</c>");
    SAXParser parser;
    for (const char* event : {"startDocument", "startElement", "characters", "comment", "endEntity",
                              "processingInstruction", "warning", "error", "endElement"}) {
        Recorder recorder;
        recorder.attach(parser);
        for (const auto& [action, told] : exceptions) {
            recorder.when(event, action);
            const Outcome outcome = observe([&] { parser.parse("throw.xml"); });
            EXPECT_EQ(std::to_string(outcome.code) + outcome.message + outcome.type, told) << event;
            EXPECT_FALSE(parser.isParsing());
        }
        recorder.when(event, [] { throw std::runtime_error("foreign"); });
        output_of([&] { EXPECT_THROW(parser.parse("throw.xml"), std::runtime_error) << event; });
        EXPECT_FALSE(parser.isParsing());
        EXPECT_NE(inside_parse(parser, [] {}).find("endDocument"), std::string::npos);
    }
}

TEST(Features, NameOfTheDocumentIsReleasedByAHandler) {
    write_file("a-name-that-no-string-holds-within-itself.xml", "<a b='");
    auto name = std::make_unique<std::string>("a-name-that-no-string-holds-within-itself.xml");
    SAXParser parser;
    Recorder recorder;
    recorder.attach(parser);
    recorder.when("startDocument", [&] { name.reset(); });
    const Outcome outcome = observe([&] { parser.parse(name->c_str()); }, &recorder);
    EXPECT_NE(outcome.message.find("a-name-that-no-string-holds-within-itself.xml () at line 1"),
              std::string::npos);
}

TEST(Features, ThreadsWaitForEachOther) {
    std::atomic<bool> started{false};
    std::thread other;
    SAXParser parser;
    inside_parse(parser, [&] {
        other = std::thread([&started] {
            SAXParser second;
            Recorder recorder;
            recorder.when("startDocument", [&started] { started = true; });
            recorder.attach(second);
            second.parse("ab.xml");
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        EXPECT_FALSE(started);
    });
    other.join();
    EXPECT_TRUE(started);
}

}  // namespace
}  // namespace qvox_test
