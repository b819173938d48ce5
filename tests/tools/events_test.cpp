// `qvox events`, on whole documents.
#include "run_program.h"

namespace {

class EventsTest : public ProgramTest {
protected:
    // The events of the document, without the lines that each has.
    void expect_events(const std::string& document, const std::string& events) const {
        EXPECT_EQ(told("events", document), "startDocument\n" + events + "endDocument\n");
    }
};

TEST_F(EventsTest, Content) {
    expect_events(
        "<?xml version='1.0'?>\n<!--a\nb--><?t?><?t d?>\n"
        "<r xmlns='u' xmlns:p='v' p:x='1' y=''>one &lt; <![CDATA[two]]></r><!---->",
        R"(comment text="a\nb"
processingInstruction target="t" data=null
processingInstruction target="t" data="d"
startPrefixMapping prefix=null uri="u"
startPrefixMapping prefix="p" uri="v"
startElement uri="u" localName="r" qName="r")"
        R"( [uri="v" localName="x" qName="p:x" type=null value="1"])"
        R"( [uri=null localName="y" qName="y" type=null value=""]
startEntity name="lt"
endEntity name="lt"
characters text="one < "
startCDATA
characters text="two"
endCDATA
endElement uri="u" localName="r" qName="r"
endPrefixMapping prefix=null
endPrefixMapping prefix="p"
comment text=""
)");
}

TEST_F(EventsTest, NamespaceOptions) {
    expect_runs(R"~(
events --namespace-prefixes => <p:a xmlns:p='u' b='1'/> => startDocument\nstartPrefixMapping
  prefix="p" uri="u"\nstartElement uri="u" localName="a" qName="p:a" [uri=null localName="xmlns"
  qName="xmlns:p" type=null value="u"] [uri=null localName="b" qName="b" type=null
  value="1"]\nendElement uri="u" localName="a" qName="p:a"\nendPrefixMapping
  prefix="p"\nendDocument\n
events --no-namespaces => <p:a xmlns:p='u' b='1'/> => startDocument\nstartElement uri=null
  localName=null qName="p:a" [uri=null localName=null qName="b" type=null value="1"]\nendElement
  uri=null localName=null qName="p:a"\nendDocument\n
)~");
}

TEST_F(EventsTest, Declarations) {
    file("f.dtd", "<?xml encoding='Shift_JIS'?><!ELEMENT \x8F\x91 ANY>\n");
    expect_events(
        "<!DOCTYPE a PUBLIC 'pub' 'f.dtd' [<!ELEMENT a ( b | c )*>"
        "<!ATTLIST a x (1 | 2) '1' y CDATA #REQUIRED><!ENTITY % p 'x'>"
        "<!ENTITY g PUBLIC 'q' 'g' NDATA n><!NOTATION n SYSTEM 'n'>]><a y=' 1  2 '/>",
        R"~(startDTD name="a" publicId="pub" systemId="f.dtd"
elementDecl name="a" model="(b|c)*"
attributeDecl elementName="a" attributeName="x" type="(1|2)" valueDefault=null value="1"
attributeDecl elementName="a" attributeName="y" type="CDATA" valueDefault="#REQUIRED" value=null
internalEntityDecl name="%p" value="x"
externalEntityDecl name="g" publicId="q" systemId="g"
notationDecl name="n" publicId=null systemId="n"
startEntity name="[dtd]"
elementDecl name="書" model="ANY"
endEntity name="[dtd]"
endDTD
startElement uri=null localName="a" qName="a")~"
        R"~( [uri=null localName="y" qName="y" type="CDATA" value=" 1  2 "])~"
        R"~( [uri=null localName="x" qName="x" type="(1|2)" value="1"]
endElement uri=null localName="a" qName="a"
)~");
}

TEST_F(EventsTest, TextAndWarnings) {
    expect_runs(R"~(
events => <a b='"&#x1F600;'>\t\x5C&#x7f;&#x202E;&#x20BB7;&#xFDD0;&#xE9;</a> => startDocument\nstartElement
  uri=null localName="a" qName="a" [uri=null localName="b" qName="b" type=null
  value="\x5C"😀"]\ncharacters text="\x5Ct\x5C\x5C\x5Cu{7f}\x5Cu{202e}𠮷\x5Cu{fdd0}é"\nendElement uri=null
  localName="a" qName="a"\nendDocument\n
events => <!DOCTYPE a SYSTEM 'no "日本.dtd'>\n<a>&x;</a> => startDocument\nstartDTD name="a"
  publicId=null systemId="no \x5C"日本.dtd"\nwarning code=1 line=2 column=35 message="system id (no
  \x5C"日本.dtd) can't open"\nendDTD\nstartElement uri=null localName="a" qName="a"\nwarning code=9
  line=2 column=4 message="entity name (x) not found"\nendElement uri=null localName="a"
  qName="a"\nendDocument\n
)~");
    const std::string most(8192, 'x');
    EXPECT_NE(told("events", "<a>" + most + "&#x301C;</a>").find("text=\"" + most + "〜\"\n"),
              std::string::npos);
}

// The events up to the error, the error among them; then the error on standard error, and the next
// file. The events and errors are in order where both go to one place.
TEST_F(EventsTest, GoesOnAfterABadFile) {
    file("書.xml", "<a>x<b c='' / ></b></a>");
    file("good.xml", "<a/>");
    const std::string start = "startDocument\nstartElement uri=null localName=\"a\" qName=\"a\"\n";
    const std::string missing = "missing.xml: file (missing.xml) cannot open\n";
    const std::string first =
        "file \"書.xml\"\n" + start +
        "characters text=\"x\"\n"
        "error code=6 line=1 column=14 message=\"書.xml : parse error (/) at line 1, col 14\"\n";
    const std::string error = "書.xml:1:14: 書.xml : parse error (/) at line 1, col 14\n";
    const std::string second = "file \"good.xml\"\n" + start +
                               "endElement uri=null localName=\"a\" qName=\"a\"\nendDocument\n";
    const std::string begin = "file \"missing.xml\"\n";
    EXPECT_EQ(qvox("events missing.xml 書.xml good.xml"),
              (Result{1, begin + first + second, missing + error}));
    EXPECT_EQ(qvox("events missing.xml 書.xml good.xml 2>&1"),
              (Result{1, begin + missing + first + error + second, ""}));
}

TEST_F(EventsTest, TheOrderIsTheSameInAllEncodings) {
    const std::string expected = qvox("events $DATA/order-utf8.xml").out;
    EXPECT_EQ(std::count(expected.begin(), expected.end(), '\n'), 242);
    EXPECT_NE(expected.find("\ncharacters text=\"２０２４年３月２９日（金）　１４時～１６時\"\n"),
              std::string::npos);
    for (const std::string encoding :
         {"utf16le-bom", "utf16be-bom", "utf16le", "utf16be", "sjis", "eucjp", "iso2022jp"}) {
        EXPECT_EQ(qvox("events $DATA/order-" + encoding + ".xml"), (Result{0, expected, ""}));
    }
}

}  // namespace
