// `qvox tree`, on whole documents, and its printer on trees that no document has.
#include <cstdio>
#include <cstring>
#include <vector>

#include "../../tools/qvox/tree_printer.h"
#include "run_program.h"

namespace {

class TreeTest : public ProgramTest {};

TEST_F(TreeTest, Content) {
    EXPECT_EQ(told("tree",
                   "<?xml version='1.0'?>\n<!--a\nb--><?t?><?t d?>\n<r xmlns='u' xmlns:p='v' "
                   "p:x='\"1' z=' 1 ' z=''>one &lt; <![CDATA[two]]><![CDATA[]]><p:e/>\t"
                   "<!----></r><!--\\-->"),
              R"(document
  processingInstruction target="xml" data="version=\"1.0\""
  comment data="a\nb"
  processingInstruction target="t" data=null
  processingInstruction target="t" data="d"
  element name="r" namespaceURI="u" localName="r"
    attribute name="xmlns" namespaceURI=null localName=null value="u"
    attribute name="xmlns:p" namespaceURI=null localName=null value="v"
    attribute name="p:x" namespaceURI="v" localName="x" value="\"1"
    attribute name="z" namespaceURI=null localName=null value=""
    text data="one < "
    cdataSection data="two"
    cdataSection data=""
    element name="p:e" namespaceURI="v" localName="e"
    text data="\t"
    comment data=""
  comment data="\\"
)");
    EXPECT_EQ(told("tree --no-namespaces", "<p:a xmlns:p='u'><p:b p:c='&#x20BB7;&#x200B;'/></p:a>"),
              R"(document
  element name="p:a" namespaceURI=null localName=null
    attribute name="xmlns:p" namespaceURI=null localName=null value="u"
    element name="p:b" namespaceURI=null localName=null
      attribute name="p:c" namespaceURI=null localName=null value="𠮷\u{200b}"
)");
}

TEST_F(TreeTest, DocumentType) {
    file("f.dtd", "<?xml encoding='Shift_JIS'?><!ELEMENT \x8F\x91 ANY>\n<!--d-->");
    EXPECT_EQ(told("tree",
                   "<!DOCTYPE a PUBLIC '' 'f.dtd' [<!--c--><!ATTLIST a x (1 | 2) '1' y CDATA "
                   "#REQUIRED p:z CDATA ''><!ENTITY e 't>\n\n\"'><!NOTATION n SYSTEM 'n'>"
                   "<?t d?><!ENTITY g PUBLIC 'q' 'g' NDATA n>]><a y=' 1  2 '>&e;</a>"),
              R"(document
  documentType name="a" publicId="" systemId="f.dtd"
    entity name="e" publicId=null systemId=null notationName=null
    entity name="g" publicId="q" systemId="g" notationName="n"
    notation name="n" publicId=null systemId="n"
    declarations text="<!ATTLIST a x (1|2) \"1\" y CDATA #REQUIRED p:z CDATA \"\">"
    declarations text="<!ENTITY e \"t>"
    declarations text=""
    declarations text="\"\">"
    declarations text="<!NOTATION n SYSTEM \"n\">"
    declarations text="<!ENTITY g PUBLIC \"q\" \"g\" NDATA n>"
    declarations text="<!ELEMENT 書 ANY>"
    comment data="c"
    processingInstruction target="t" data="d"
    comment data="d"
  element name="a" namespaceURI=null localName=null
    attribute name="y" namespaceURI=null localName=null value=" 1  2 "
    attribute name="x" namespaceURI=null localName=null value="1" defaulted
    attribute name="p:z" namespaceURI=null localName=null value="" defaulted
    text data="t>\n\n\""
)");
    EXPECT_EQ(told("tree", "<!DOCTYPE a><a/>"),
              "document\n  documentType name=\"a\" publicId=null systemId=null\n"
              "  element name=\"a\" namespaceURI=null localName=null\n");
}

// Nothing but the report of a bad document, which has its place where the document can be read
// again; and wrong use and lost output.
TEST_F(TreeTest, Refusals) {
    file("書.xml", "<a>x<b c='' / ></b></a>");
    file("tags.xml", "<a>\n  <b></a>");
    file("good.xml", "<a/>");
    expect_results(R"(
$QVOX tree 書.xml => 1 => => 書.xml:1:14: 書.xml : parse error (/) at line 1, col 14\n
$QVOX tree tags.xml => 1 => => tags.xml:2:9: end tag (a) not match to start tag (b)\n
$QVOX tree /dev/stdin < tags.xml => 1 => => /dev/stdin:2:9: end tag (a) not match to start tag (b)\n
cat tags.xml | $QVOX tree /dev/stdin => 1 => => /dev/stdin:2:9: end tag (a) not match to start tag
  (b)\n
$QVOX tree missing.xml => 1 => => missing.xml: file (missing.xml) cannot open\n
$QVOX tree . => 1 => => .: file (.) cannot open\n
$QVOX tree good.xml >/dev/full => 2 => => qvox: cannot write to standard output: No space left on
  device\n
)");
}

// The lines that the printer writes.
std::vector<std::string> lines_of(qvox::Node* root) {
    std::FILE* const stream = std::tmpfile();
    Output output(stream);
    print_tree(root, output);
    output.flush();
    std::rewind(stream);
    std::vector<std::string> lines;
    char line[200];
    while (std::fgets(line, sizeof line, stream) != nullptr) {
        lines.emplace_back(line, std::strcspn(line, "\n"));
    }
    std::fclose(stream);
    return lines;
}

TEST(TreePrinter, TreesThatNoDocumentHas) {
    qvox::DOMParser parser;
    qvox::Document* const document = parser.createDocument();
    qvox::Node* node = document->createEntityReference("e");
    node->appendChild(document->createTextNode(qvox::Xstring::Null));
    for (int i = 0; i < 32; ++i) {
        auto* const above = document->createElementNS("u", "p:a");
        if (i == 31) above->setAttributeNodeNS(document->createAttributeNS("u", "q:b"));
        above->appendChild(node);
        node = above;
    }
    qvox::Node* const fragment = document->createDocumentFragment();
    fragment->appendChild(node);
    fragment->appendChild(document->createComment("behind"));
    const std::vector<std::string> lines = lines_of(fragment);
    const std::string element = "element name=\"p:a\" namespaceURI=\"u\" localName=\"a\"";
    ASSERT_EQ(lines.size(), 37U);
    EXPECT_EQ(lines[0], "documentFragment");
    EXPECT_EQ(lines[1], "  " + element);
    EXPECT_EQ(lines[2],
              "    attribute name=\"q:b\" namespaceURI=\"u\" localName=\"b\" value=null"
              " defaulted");
    EXPECT_EQ(lines[33], std::string(64, ' ') + element);
    EXPECT_EQ(lines[34], std::string(64, ' ') + "(33) entityReference name=\"e\"");
    EXPECT_EQ(lines[35], std::string(64, ' ') + "(34) text data=null");
    EXPECT_EQ(lines[36], "  comment data=\"behind\"");
    parser.freeNode(fragment);
    parser.free(document);
}

}  // namespace
