// The events of whole documents without a document type declaration.
#include <gtest/gtest.h>

#include "support/encode.h"
#include "support/recorder.h"

namespace qvox_test {
namespace {

struct Case {
    std::string document;
    std::string events;  // joined, without startDocument and endDocument
};

void expect_accepted(const Case& test, const Options& options = {}) {
    const Outcome outcome = parse_bytes(test.document, options);
    EXPECT_EQ(joined(outcome.events), "startDocument; " + test.events + "; endDocument")
        << test.document;
    EXPECT_EQ(outcome.message, "") << test.document;
    EXPECT_EQ(outcome.output, "") << test.document;
}

// Content in an element <a> without namespace or attributes.
void expect_content(const Case& content) {
    const std::string separator = content.events.empty() ? "" : "; ";
    expect_accepted(
        {"<a>" + content.document + "</a>",
         "startElement - 'a' 'a'; " + content.events + separator + "endElement - 'a' 'a'"});
}

TEST(Document, AroundTheRootElement) {
    const std::string root = "startElement - 'a' 'a'; endElement - 'a' 'a'";
    const Case cases[] = {
        {"<a/>", root},
        {"<a></a>", root},
        {"<a\n\t></a\r >", root},
        {"\r\n<!---->\t<?p?><a/>\n<?q r?> <!--c-->\n",
         "comment ''; processingInstruction 'p' -; " + root +
             "; processingInstruction 'q' 'r'; comment 'c'"},
        {"<?xml version=\"1.0\"?><a/>", root},
        {"<?xml version = '1.0'  encoding\n=\n\"utf-8\" standalone='no' ?>\n<a/>", root},
        {"<?xml version='a.b:c-d_e' standalone='yes'?><!--c--><a/>", "comment 'c'; " + root},
    };
    for (const Case& test : cases) expect_accepted(test);
}

TEST(Document, Names) {
    for (const std::u16string name : {u"_", u"a.-1_", u"日本々ー", u"〇\u00B7e\u0301"}) {
        const std::string events = utf8(u"Element - '" + name + u"' '" + name + u"'");
        expect_accepted({utf16le(u"\uFEFF<" + name + u"/>"), "start" + events + "; end" + events});
    }
}

TEST(Document, Text) {
    const std::string lt = "startEntity 'lt'; endEntity 'lt'; ";
    const Case cases[] = {
        {"", ""},
        {" ", "characters ' '"},
        {"\n<b/>\r\n",
         "characters '\\n'; startElement - 'b' 'b'; endElement - 'b' 'b'; characters '\\n'"},
        {"> ]] ]>] %p; ' \" - --> ?>", "characters '> ]] ]>] %p; \\' \" - --> ?>'"},
        {"&#65;&#x41;&#x4a;&#x4A;&#00065;", "characters 'AAJJA'"},
        {"&#60;b/>&#38;lt;", "characters '<b/>&lt;'"},
        {"&#9;&#10;|&#13;|&#13;&#10;|&#xFFFD;&#xE000;&#xD7FF;",
         utf8(u"characters '\\t\\n|\\n|\\n|\uFFFD\uE000\uD7FF'")},
        {"&#x10000;&#134071;&#x10FFFF;",
         "characters '\xF0\x90\x80\x80\xF0\xA0\xAE\xB7\xF4\x8F\xBF\xBF'"},
        {"x&lt;y", lt + "characters 'x<y'"},
        {"&lt;b/>&amp;lt;", lt + "startEntity 'amp'; endEntity 'amp'; characters '<b/>&lt;'"},
        {"&gt;&apos;&quot;",
         "startEntity 'gt'; endEntity 'gt'; startEntity 'apos'; endEntity 'apos'; "
         "startEntity 'quot'; endEntity 'quot'; characters '>\\'\"'"},
        {"x<!--c-->&lt;<?p?>y", "characters 'x'; comment 'c'; " + lt +
                                    "characters '<'; processingInstruction 'p' -; characters 'y'"},
    };
    for (const Case& test : cases) expect_content(test);
}

TEST(Document, MarkupInContent) {
    const std::string pi = "processingInstruction ";
    const Case cases[] = {
        {"<!--&--><!--%p;--><!-- - -> -->", "comment '&'; comment '%p;'; comment ' - -> '"},
        {"<!-->--><!--->--><!--<a>&lt;]]>-->", "comment '>'; comment '->'; comment '<a>&lt;]]>'"},
        {"x<![CDATA[]]>y", "characters 'x'; startCDATA; characters ''; endCDATA; characters 'y'"},
        {"<![CDATA[&lt;<b>]]>", "startCDATA; characters '&lt;<b>'; endCDATA"},
        {"<![CDATA[%]] >]]]><![CDATA[>]]>",
         "startCDATA; characters '%]] >]'; endCDATA; startCDATA; characters '>'; endCDATA"},
        {"<?xml version='1.0' encoding='UTF-8'?>x<?xml encoding='utf-8' ?>", "characters 'x'"},
        {"<?t?>\n<?t?>", pi + "'t' -; characters '\\n'; " + pi + "'t' -"},
        {"<?t ?>\n<?t ?>", pi + "'t' ''; characters '\\n'; " + pi + "'t' ''"},
        {"<?t \n\t&lt;%p? >\?\?><?t >?>", pi + "'t' '&lt;%p? >?'; " + pi + "'t' '>'"},
        // On the first line a target is "xml" only in just this form.
        {"<?xMl?><?xML d?><?x?>", pi + "'xMl' -; " + pi + "'xML' 'd'; " + pi + "'x' -"},
        {"<?xml-a?>\n<?xml-a?>", pi + "'xml-a' -; characters '\\n'; " + pi + "'xml-a' -"},
    };
    for (const Case& test : cases) expect_content(test);
}

TEST(Document, AttributeValues) {
    const struct {
        const char* literal;
        const char* value;
    } cases[] = {
        {"''", "''"},
        {"\"'\"", "'\\''"},
        {"'\"&#39;&#34;&#60;<%p;'", "'\"\\'\"<<%p;'"},
        {"'  x  y  '", "'  x  y  '"},
        {"'x\t\n\r\n\ry'", "'x  y'"},
        {"'x\n\t\ny'", "'x   y'"},
        {"'\t&#9;&#10;&#13;&#10;x&#13;'", "'   x '"},
        {"'&#x20BB7;'", "'\xF0\xA0\xAE\xB7'"},
    };
    for (const auto& test : cases) {
        expect_accepted({std::string("<a\nb = ") + test.literal + " />",
                         std::string("startElement - 'a' 'a' [- 'b' 'b' - ") + test.value +
                             "]; endElement - 'a' 'a'"});
    }
    // A predefined entity is reported while the tag is being read, and its quote is data.
    expect_accepted({"<a b=\"&quot;&lt;\"/>",
                     "startEntity 'quot'; endEntity 'quot'; startEntity 'lt'; endEntity 'lt'; "
                     "startElement - 'a' 'a' [- 'b' 'b' - '\"<']; endElement - 'a' 'a'"});
}

TEST(Document, Namespaces) {
    const Case cases[] = {
        {"<a xmlns:p='u' p:b='1' c='2'/>",
         "startPrefixMapping 'p' 'u'; startElement - 'a' 'a' ['u' 'b' 'p:b' - '1'] "
         "[- 'c' 'c' - '2']; endElement - 'a' 'a'; endPrefixMapping 'p'"},
        {"<a xmlns='u'><b c=''/></a>",
         "startPrefixMapping - 'u'; startElement 'u' 'a' 'a'; startElement 'u' 'b' 'b' "
         "[- 'c' 'c' - '']; endElement 'u' 'b' 'b'; endElement 'u' 'a' 'a'; endPrefixMapping -"},
        {"<a xmlns=''/>",
         "startPrefixMapping - ''; startElement '' 'a' 'a'; endElement '' 'a' 'a'; "
         "endPrefixMapping -"},
        {"<p:a b='1' b='2' xmlns:q='v' xmlns:p='u' xmlns:p='w'></p:a>",
         "startPrefixMapping 'q' 'v'; startPrefixMapping 'p' 'u'; startPrefixMapping 'p' 'w'; "
         "startElement 'u' 'a' 'p:a' [- 'b' 'b' - '1'] [- 'b' 'b' - '2']; "
         "endElement 'u' 'a' 'p:a'; endPrefixMapping 'q'; endPrefixMapping 'p'; "
         "endPrefixMapping 'p'"},
        {"<p:a xmlns:p='u'><p:a xmlns:p='v'/><p:a/></p:a>",
         "startPrefixMapping 'p' 'u'; startElement 'u' 'a' 'p:a'; startPrefixMapping 'p' 'v'; "
         "startElement 'v' 'a' 'p:a'; endElement 'v' 'a' 'p:a'; endPrefixMapping 'p'; "
         "startElement 'u' 'a' 'p:a'; endElement 'u' 'a' 'p:a'; endElement 'u' 'a' 'p:a'; "
         "endPrefixMapping 'p'"},
        {"<p:a xml:lang='ja' xmlnsx='1' xmlns:p='\n '/>",
         "startPrefixMapping 'p' '  '; startElement '  ' 'a' 'p:a' [- 'lang' 'xml:lang' - 'ja'] "
         "[- 'xmlnsx' 'xmlnsx' - '1']; endElement '  ' 'a' 'p:a'; endPrefixMapping 'p'"},
        {"<p:a/>", "startElement - 'a' 'p:a'; endElement - 'a' 'p:a'"},
        {"<a: :='1'/>", "startElement - '' 'a:' [- '' ':' - '1']; endElement - '' 'a:'"},
        // An empty prefix is none, but its declaration isn't that of the default namespace.
        {"<:a xmlns='u' :b='1'/>",
         "startPrefixMapping - 'u'; startElement 'u' 'a' ':a' [- 'b' ':b' - '1']; "
         "endElement 'u' 'a' ':a'; endPrefixMapping -"},
        {"<:a xmlns:='u'/>",
         "startPrefixMapping '' 'u'; startElement - 'a' ':a'; endElement - 'a' ':a'; "
         "endPrefixMapping ''"},
        {"<p:b:c xmlns:p='u'/>",
         "startPrefixMapping 'p' 'u'; startElement 'u' 'b:c' 'p:b:c'; "
         "endElement 'u' 'b:c' 'p:b:c'; endPrefixMapping 'p'"},
    };
    for (const Case& test : cases) expect_accepted(test);
}

TEST(Document, NamespaceFeatures) {
    const std::string mappings = "startPrefixMapping 'p' 'u'; startPrefixMapping - 'v'; ";
    const std::string ends = "; endElement 'u' 'a' 'p:a'; endPrefixMapping 'p'; endPrefixMapping -";
    const std::string declarations = " [- 'xmlns' 'xmlns:p' - 'u'] [- 'xmlns' 'xmlns' - 'v']";
    const std::string qualified = "startElement 'u' 'a' 'p:a' ['u' 'b' 'p:b' - '1']";
    const std::string plain = "startElement - - 'p:a' [- - 'p:b' - '1']";
    for (const bool prefixes : {false, true}) {
        Options options;
        options.namespacePrefixes = prefixes;
        const std::string shown = prefixes ? declarations : "";
        const std::string document = "<p:a p:b='1' xmlns:p='u' xmlns='v'/>";
        expect_accepted({document, mappings + qualified + shown + ends}, options);
        options.namespaces = false;
        expect_accepted({document, plain + shown + "; endElement - - 'p:a'"}, options);
    }
}

// What is not declared stands for nothing, and is a warning at the token that holds the reference.
TEST(Document, UndeclaredEntities) {
    const std::string a = "startDocument; startElement - 'a' 'a'; ";
    const std::string ends = "endElement - 'a' 'a'; endDocument";
    const std::string unknown = " 'entity name (u) not found'; ";
    const Case cases[] = {
        {"<a>x&u;y</a>", a + "warning 9 1:5" + unknown + "characters 'xy'; " + ends},
        {"<a>&u;&u;<b/>&u;</a>",
         a + "warning 9 1:5" + unknown + "warning 9 1:5" + unknown +
             "startElement - 'b' 'b'; endElement - 'b' 'b'; warning 9 1:15" + unknown + ends},
        {"<a\nb='&u;'/>", "startDocument; warning 9 2:3" + unknown +
                              "startElement - 'a' 'a' [- 'b' 'b' - '']; " + ends},
    };
    for (const Case& test : cases) {
        const Outcome outcome = parse_bytes(test.document);
        EXPECT_EQ(joined(outcome.events), test.events);
        EXPECT_EQ(outcome.output.substr(0, 41), "QVOX warning : entity name (u) not found\n");
    }
}

TEST(Document, AttributeLookups) {
    class Lookups : public Recorder {
    public:
        void startElement(const Text&, const Text&, const Text&,
                          const qvox::Attributes& attributes) override {
            EXPECT_EQ(attributes.getLength(), 3);
            EXPECT_EQ(attributes.getIndex("b"), 0);
            EXPECT_EQ(attributes.getIndex("p:b"), 2);
            EXPECT_EQ(attributes.getIndex("p:"), -1);
            EXPECT_EQ(attributes.getIndex("u", "b"), 2);
            EXPECT_EQ(attributes.getIndex("", "b"), 0);
            EXPECT_EQ(attributes.getIndex("v", "b"), -1);
            EXPECT_TRUE(attributes.getValue("b") == "1");
            EXPECT_TRUE(attributes.getValue("u", "b") == "3");
            for (const Text* none : {&attributes.getValue("c"), &attributes.getValue("u", "c"),
                                     &attributes.getType("b"), &attributes.getType("u", "b")}) {
                EXPECT_TRUE(none->isNull());
            }
            for (const int index : {-1, 3, 2147483647}) {
                for (const Text* none : {&attributes.getURI(index), &attributes.getQName(index),
                                         &attributes.getLocalName(index),
                                         &attributes.getType(index), &attributes.getValue(index)}) {
                    EXPECT_TRUE(none->isNull());
                }
            }
            events += "looked up";
        }
    } lookups;
    Options options;
    options.recorder = &lookups;
    parse_bytes("<a b='1' b='2' p:b='3' xmlns:p='u'/>", options);
    EXPECT_NE(lookups.events.find("looked up"), std::string::npos);
}

}  // namespace
}  // namespace qvox_test
