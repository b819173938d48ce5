// Features and properties, sources, and what handlers may do during a parse.
#include <memory>
#include <stdexcept>
#include <tuple>

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
    // What each feature is at first, and what it is once it has been set to true.
    for (const auto& [name, before, behind] :
         {std::tuple(qvox::FEATURE_NAMESPACES, true, true),
          {qvox::FEATURE_NAMESPACE_PREFIXES, false, true},
          {qvox::FEATURE_VALIDATION, false, false},
          {qvox::FEATURE_EXTERNAL_GENERAL_ENTITIES, true, true},
          {qvox::FEATURE_EXTERNAL_PARAMETER_ENTITIES, true, true},
          {qvox::FEATURE_EXTERNAL_FILES, true, true},
          {qvox::FEATURE_CONCURRENT, false, true}}) {
        const std::string refusal = "'feature " + std::string(name) + " is not supported";
        EXPECT_EQ(parser.getFeature(name), before) << name;
        for (const bool value : {false, true}) {
            EXPECT_EQ(result_of([&, &feature = name] { parser.setFeature(feature, value); }),
                      behind ? "done" : refusal + "'");
            EXPECT_EQ(parser.getFeature(name), value && behind);
        }
        inside_parse(parser, [&, &feature = name, &isSet = behind] {
            EXPECT_EQ(result_of([&] { parser.setFeature(feature, false); }),
                      refusal + " in parsing'");
            EXPECT_EQ(parser.getFeature(feature), isSet);
        });
    }
    for (const std::string name : {"", "Http://xml.org/sax/features/namespaces", "namespaces",
                                   "http://xml.org/sax/features/namespaces/"}) {
        const std::string message = "'feature " + name + " not recognized'";
        EXPECT_EQ(result_of([&] { parser.getFeature(name.c_str()); }), message);
        EXPECT_EQ(result_of([&] { parser.setFeature(name.c_str(), true); }), message);
    }
    const std::string longName(1000, 'x');
    EXPECT_LE(result_of([&] { parser.getFeature(longName.c_str()); }).size(), 255u + 2);
}

TEST(Features, Properties) {
    SAXParser parser;
    Recorder recorder;
    EXPECT_EQ(parser.getProperty(qvox::PROPERTY_LEXICAL_HANDLER), nullptr);
    EXPECT_EQ(parser.getProperty(qvox::PROPERTY_DECL_HANDLER), nullptr);
    recorder.attach(parser);
    const auto* const lexical = static_cast<const qvox::LexicalHandler*>(&recorder);
    EXPECT_EQ(parser.getProperty(qvox::PROPERTY_LEXICAL_HANDLER), lexical);
    EXPECT_EQ(parser.getProperty(qvox::PROPERTY_DECL_HANDLER),
              static_cast<const qvox::DeclHandler*>(&recorder));
    EXPECT_EQ(parser.getEntityResolver(), &recorder);
    const std::string node = qvox::PROPERTY_DOM_NODE;
    const auto expect_refusals = [&](const std::string& name, const std::string& start,
                                     const std::string& message) {
        EXPECT_EQ(result_of([&] { parser.getProperty(name.c_str()); }), "'" + message + "'");
        EXPECT_EQ(result_of([&] { parser.setProperty(name.c_str(), lexical); }),
                  "'" + start + message + "'");
    };
    expect_refusals("x", "", "property x not recognized");
    expect_refusals(node, "to set ", "property " + node + " is not supported");
    inside_parse(parser, [&] {
        expect_refusals(node, "to set ", "property " + node + " is not supported in parsing");
    });
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
    write_file("\x95\\.xml", "<a/>");
    EXPECT_EQ(parse_file("file:\x95\\.xml").message + parse_file("\x95\\.xml").message, "");
    for (const char* name :
         {"FILE:\x95\\.xml", "file:file:none", "none.xml", "", static_cast<const char*>(nullptr)}) {
        Recorder recorder;
        SAXParser parser;
        recorder.attach(parser);
        const Outcome outcome = observe([&] { parser.parse(name); }, &recorder);
        const std::string shown = name != nullptr ? name : "(null)";
        EXPECT_EQ(outcome.output, "QVOX error : file (" + shown + ") cannot open\n");
        EXPECT_EQ(outcome.code, QVOXException::FILE_OPEN_ERR);
        EXPECT_TRUE(outcome.events.empty() && !parser.isParsing());
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
    const std::string fileName = "a-name-that-no-string-holds-within-itself.xml";
    write_file(fileName, "<a b='");
    auto name = std::make_unique<std::string>(fileName);
    SAXParser parser;
    Recorder recorder;
    recorder.attach(parser);
    recorder.when("startDocument", [&] { name.reset(); });
    EXPECT_EQ(observe([&] { parser.parse(name->c_str()); }, &recorder).message,
              "unterminated literal : " + fileName + " () at line 1, col 7");
}

}  // namespace
}  // namespace qvox_test
