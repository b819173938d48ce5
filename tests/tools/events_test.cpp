// `qvox events`, on whole documents.
#include <string>

#include "run_program.h"

namespace {

class EventsTest : public ProgramTest {
protected:
    // The events of the document, without the lines that each has.
    std::string events(const std::string& document, const std::string& options = "") {
        file("f.xml", document);
        const Result result = qvox("events " + options + " f.xml");
        EXPECT_EQ(result.status, 0) << document;
        EXPECT_EQ(result.err, "") << document;
        const std::string first = "startDocument\n";
        const std::string last = "endDocument\n";
        EXPECT_EQ(result.out.substr(0, first.size()), first);
        EXPECT_EQ(result.out.substr(result.out.size() - last.size()), last);
        return result.out.substr(first.size(), result.out.size() - first.size() - last.size());
    }
};

TEST_F(EventsTest, Content) {
    EXPECT_EQ(events("<?xml version='1.0'?>\n<!--a\nb--><?t?><?t d?>\n"
                     "<r xmlns='u' xmlns:p='v' p:x='1' y=''>one &lt; <![CDATA[two]]></r><!---->"),
              "comment text=\"a\\nb\"\n"
              "processingInstruction target=\"t\" data=null\n"
              "processingInstruction target=\"t\" data=\"d\"\n"
              "startPrefixMapping prefix=null uri=\"u\"\n"
              "startPrefixMapping prefix=\"p\" uri=\"v\"\n"
              "startElement uri=\"u\" localName=\"r\" qName=\"r\""
              " [uri=\"v\" localName=\"x\" qName=\"p:x\" type=null value=\"1\"]"
              " [uri=null localName=\"y\" qName=\"y\" type=null value=\"\"]\n"
              "startEntity name=\"lt\"\n"
              "endEntity name=\"lt\"\n"
              "characters text=\"one < \"\n"
              "startCDATA\n"
              "characters text=\"two\"\n"
              "endCDATA\n"
              "endElement uri=\"u\" localName=\"r\" qName=\"r\"\n"
              "endPrefixMapping prefix=null\n"
              "endPrefixMapping prefix=\"p\"\n"
              "comment text=\"\"\n");
}

TEST_F(EventsTest, NamespaceOptions) {
    const std::string document = "<p:a xmlns:p='u' b='1'/>";
    EXPECT_EQ(events(document, "--namespace-prefixes"),
              "startPrefixMapping prefix=\"p\" uri=\"u\"\n"
              "startElement uri=\"u\" localName=\"a\" qName=\"p:a\""
              " [uri=null localName=\"xmlns\" qName=\"xmlns:p\" type=null value=\"u\"]"
              " [uri=null localName=\"b\" qName=\"b\" type=null value=\"1\"]\n"
              "endElement uri=\"u\" localName=\"a\" qName=\"p:a\"\n"
              "endPrefixMapping prefix=\"p\"\n");
    EXPECT_EQ(events(document, "--no-namespaces"),
              "startElement uri=null localName=null qName=\"p:a\""
              " [uri=null localName=null qName=\"b\" type=null value=\"1\"]\n"
              "endElement uri=null localName=null qName=\"p:a\"\n");
    EXPECT_EQ(events(document, "--no-namespaces --namespace-prefixes"),
              "startElement uri=null localName=null qName=\"p:a\""
              " [uri=null localName=\"xmlns\" qName=\"xmlns:p\" type=null value=\"u\"]"
              " [uri=null localName=null qName=\"b\" type=null value=\"1\"]\n"
              "endElement uri=null localName=null qName=\"p:a\"\n");
}

TEST_F(EventsTest, Declarations) {
    file("f.dtd", "<?xml encoding='Shift_JIS'?><!ELEMENT \x8F\x91 ANY>\n");
    EXPECT_EQ(events("<!DOCTYPE a PUBLIC 'pub' 'f.dtd' [<!ELEMENT a ( b | c )*>"
                     "<!ATTLIST a x (1 | 2) '1' y CDATA #REQUIRED>"
                     "<!ENTITY e 'text'><!ENTITY % p 'x'><!ENTITY f SYSTEM 'f.xml'>"
                     "<!ENTITY g PUBLIC 'q' 'g' NDATA n><!NOTATION n SYSTEM 'n'><!--c-->]>"
                     "<a y=' 1  2 '>&e;</a>"),
              "startDTD name=\"a\" publicId=\"pub\" systemId=\"f.dtd\"\n"
              "elementDecl name=\"a\" model=\"(b|c)*\"\n"
              "attributeDecl elementName=\"a\" attributeName=\"x\" type=\"(1|2)\" valueDefault=null"
              " value=\"1\"\n"
              "attributeDecl elementName=\"a\" attributeName=\"y\" type=\"CDATA\""
              " valueDefault=\"#REQUIRED\" value=null\n"
              "internalEntityDecl name=\"e\" value=\"text\"\n"
              "internalEntityDecl name=\"%p\" value=\"x\"\n"
              "externalEntityDecl name=\"f\" publicId=null systemId=\"f.xml\"\n"
              "externalEntityDecl name=\"g\" publicId=\"q\" systemId=\"g\"\n"
              "notationDecl name=\"n\" publicId=null systemId=\"n\"\n"
              "comment text=\"c\"\n"
              "startEntity name=\"[dtd]\"\n"
              "elementDecl name=\"書\" model=\"ANY\"\n"
              "endEntity name=\"[dtd]\"\n"
              "endDTD\n"
              "startElement uri=null localName=\"a\" qName=\"a\""
              " [uri=null localName=\"y\" qName=\"y\" type=\"CDATA\" value=\" 1  2 \"]"
              " [uri=null localName=\"x\" qName=\"x\" type=\"(1|2)\" value=\"1\"]\n"
              "startEntity name=\"e\"\n"
              "endEntity name=\"e\"\n"
              "characters text=\"text\"\n"
              "endElement uri=null localName=\"a\" qName=\"a\"\n");
}

TEST_F(EventsTest, TextThatCannotBeSeenIsEscaped) {
    EXPECT_EQ(
        events(
            "<a "
            "b='\"&#x1F600;&#xFFFD;'>\t\\&#x7f;&#x85;&#x200B;&#x202E;&#x20BB7;&#xFDD0;&#xE9;</a>"),
        "startElement uri=null localName=\"a\" qName=\"a\" [uri=null localName=\"b\" qName=\"b\""
        " type=null value=\"\\\"😀\xEF\xBF\xBD\"]\n"
        "characters text=\"\\t\\\\\\u{7f}\\u{85}\\u{200b}\\u{202e}𠮷\\u{fdd0}é\"\n"
        "endElement uri=null localName=\"a\" qName=\"a\"\n");
    const std::string most(8192, 'x');
    EXPECT_EQ(events("<a>" + most + "&#x301C;</a>"),
              "startElement uri=null localName=\"a\" qName=\"a\"\n"
              "characters text=\"" +
                  most +
                  "〜\"\n"
                  "endElement uri=null localName=\"a\" qName=\"a\"\n");
}

TEST_F(EventsTest, WarningsAreEvents) {
    EXPECT_EQ(events("<!DOCTYPE a SYSTEM 'no \"日本.dtd'>\n<a>&x;</a>"),
              "startDTD name=\"a\" publicId=null systemId=\"no \\\"日本.dtd\"\n"
              "warning code=1 line=2 column=35 message=\"system id (no \\\"日本.dtd) can't open\"\n"
              "endDTD\n"
              "startElement uri=null localName=\"a\" qName=\"a\"\n"
              "warning code=9 line=2 column=4 message=\"entity name (x) not found\"\n"
              "endElement uri=null localName=\"a\" qName=\"a\"\n");
}

// The events up to the error, the error among them; then the error on standard error, and the next
// file.
TEST_F(EventsTest, GoesOnAfterABadFile) {
    file("書.xml", "<a>x<b c='' / ></b></a>");
    file("good.xml", "<a/>");
    const std::string events =
        "file \"missing.xml\"\n"
        "file \"書.xml\"\n"
        "startDocument\n"
        "startElement uri=null localName=\"a\" qName=\"a\"\n"
        "characters text=\"x\"\n"
        "error code=6 line=1 column=14 message=\"書.xml : parse error (/) at line 1, col 14\"\n"
        "file \"good.xml\"\n"
        "startDocument\n"
        "startElement uri=null localName=\"a\" qName=\"a\"\n"
        "endElement uri=null localName=\"a\" qName=\"a\"\n"
        "endDocument\n";
    const std::string errors =
        "missing.xml: file (missing.xml) cannot open\n"
        "書.xml:1:14: 書.xml : parse error (/) at line 1, col 14\n";
    EXPECT_EQ(qvox("events missing.xml 書.xml good.xml"), (Result{1, events, errors}));

    // In order where both go to one place.
    std::string merged = events;
    merged.insert(merged.find("file \"書"), errors.substr(0, errors.find('\n') + 1));
    merged.insert(merged.find("file \"good"), errors.substr(errors.find('\n') + 1));
    EXPECT_EQ(qvox("events missing.xml 書.xml good.xml 2>&1"), (Result{1, merged, ""}));
}

TEST_F(EventsTest, TheOrderIsTheSameInAllEncodings) {
    const std::string expected =
        contents_of(std::filesystem::path(QVOX_EXAMPLE_DATA) / "../../tests/tools/order.events");
    for (const char* const encoding : {"utf8", "utf16le-bom", "utf16be-bom", "utf16le", "utf16be",
                                       "sjis", "eucjp", "iso2022jp"}) {
        EXPECT_EQ(qvox("events $DATA/order-" + std::string(encoding) + ".xml"),
                  (Result{0, expected, ""}))
            << encoding;
    }
}

}  // namespace
