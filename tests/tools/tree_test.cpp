// `qvox tree`, on whole documents, and its printer on trees that no document has.
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "../../tools/qvox/tree_printer.h"
#include "run_program.h"

namespace {

class TreeTest : public ProgramTest {
protected:
    // The tree of the document, without the line of the document itself.
    std::string tree(const std::string& document, const std::string& options = "") {
        file("f.xml", document);
        const Result result = qvox("tree " + options + " f.xml");
        EXPECT_EQ(result.status, 0) << document;
        EXPECT_EQ(result.err, "") << document;
        const std::string first = "document\n";
        EXPECT_EQ(result.out.substr(0, first.size()), first);
        return result.out.substr(std::min(first.size(), result.out.size()));
    }
};

TEST_F(TreeTest, Content) {
    EXPECT_EQ(tree("<?xml version='1.0'?>\n<!--a\nb--><?t?><?t ?><?t d?>\n"
                   "<r xmlns='u' xmlns:p='v' p:x='\"1' y='' z=' 1 ' z='2'>one &lt; <![CDATA[two]]>"
                   "<![CDATA[]]><p:e/>\t<!----></r><!--\\-->"),
              "  processingInstruction target=\"xml\" data=\"version=\\\"1.0\\\"\"\n"
              "  comment data=\"a\\nb\"\n"
              "  processingInstruction target=\"t\" data=null\n"
              "  processingInstruction target=\"t\" data=\"\"\n"
              "  processingInstruction target=\"t\" data=\"d\"\n"
              "  element name=\"r\" namespaceURI=\"u\" localName=\"r\"\n"
              "    attribute name=\"xmlns\" namespaceURI=null localName=null value=\"u\"\n"
              "    attribute name=\"xmlns:p\" namespaceURI=null localName=null value=\"v\"\n"
              "    attribute name=\"p:x\" namespaceURI=\"v\" localName=\"x\" value=\"\\\"1\"\n"
              "    attribute name=\"y\" namespaceURI=null localName=null value=\"\"\n"
              "    attribute name=\"z\" namespaceURI=null localName=null value=\"2\"\n"
              "    text data=\"one < \"\n"
              "    cdataSection data=\"two\"\n"
              "    cdataSection data=\"\"\n"
              "    element name=\"p:e\" namespaceURI=\"v\" localName=\"e\"\n"
              "    text data=\"\\t\"\n"
              "    comment data=\"\"\n"
              "  comment data=\"\\\\\"\n");
}

TEST_F(TreeTest, WithoutNamespaces) {
    EXPECT_EQ(tree("<p:a xmlns:p='u'><p:b p:c='&#x20BB7;&#x200B;'/></p:a>", "--no-namespaces"),
              "  element name=\"p:a\" namespaceURI=null localName=null\n"
              "    attribute name=\"xmlns:p\" namespaceURI=null localName=null value=\"u\"\n"
              "    element name=\"p:b\" namespaceURI=null localName=null\n"
              "      attribute name=\"p:c\" namespaceURI=null localName=null"
              " value=\"𠮷\\u{200b}\"\n");
}

TEST_F(TreeTest, DocumentType) {
    file("f.dtd", "<?xml encoding='Shift_JIS'?><!ELEMENT \x8F\x91 ANY>\n<!--d-->");
    EXPECT_EQ(tree("<!DOCTYPE a PUBLIC '' 'f.dtd' [<!--c--><!ELEMENT a ( b | c )*>"
                   "<!ATTLIST a x (1 | 2) '1' y CDATA #REQUIRED p:z CDATA ''>"
                   "<!ENTITY e 't>\n\n\"'><!ENTITY % p 'x'><!ENTITY f SYSTEM 'f.xml'>"
                   "<!NOTATION n SYSTEM 'n'><!NOTATION o PUBLIC ''><?t d?>"
                   "<!ENTITY g PUBLIC 'q' 'g' NDATA n>]>"
                   "<a y=' 1  2 '>&e;</a>"),
              "  documentType name=\"a\" publicId=\"\" systemId=\"f.dtd\"\n"
              "    entity name=\"e\" publicId=null systemId=null notationName=null\n"
              "    entity name=\"%p\" publicId=null systemId=null notationName=null\n"
              "    entity name=\"f\" publicId=null systemId=\"f.xml\" notationName=null\n"
              "    entity name=\"g\" publicId=\"q\" systemId=\"g\" notationName=\"n\"\n"
              "    notation name=\"n\" publicId=null systemId=\"n\"\n"
              "    notation name=\"o\" publicId=null systemId=null\n"
              "    declarations text=\"<!ELEMENT a (b|c)*>\"\n"
              "    declarations text=\"<!ATTLIST a x (1|2) \\\"1\\\" y CDATA #REQUIRED"
              " p:z CDATA \\\"\\\">\"\n"
              "    declarations text=\"<!ENTITY e \\\"t>\"\n"
              "    declarations text=\"\"\n"
              "    declarations text=\"\\\"\\\">\"\n"
              "    declarations text=\"<!ENTITY % p \\\"x\\\">\"\n"
              "    declarations text=\"<!ENTITY f SYSTEM \\\"f.xml\\\">\"\n"
              "    declarations text=\"<!NOTATION n SYSTEM \\\"n\\\">\"\n"
              "    declarations text=\"<!NOTATION o PUBLIC \\\"\\\">\"\n"
              "    declarations text=\"<!ENTITY g PUBLIC \\\"q\\\" \\\"g\\\" NDATA n>\"\n"
              "    declarations text=\"<!ELEMENT 書 ANY>\"\n"
              "    comment data=\"c\"\n"
              "    processingInstruction target=\"t\" data=\"d\"\n"
              "    comment data=\"d\"\n"
              "  element name=\"a\" namespaceURI=null localName=null\n"
              "    attribute name=\"y\" namespaceURI=null localName=null value=\" 1  2 \"\n"
              "    attribute name=\"x\" namespaceURI=null localName=null value=\"1\" defaulted\n"
              "    attribute name=\"p:z\" namespaceURI=null localName=null value=\"\" defaulted\n"
              "    text data=\"t>\\n\\n\\\"\"\n");
    EXPECT_EQ(tree("<!DOCTYPE a><a/>"),
              "  documentType name=\"a\" publicId=null systemId=null\n"
              "  element name=\"a\" namespaceURI=null localName=null\n");
}

TEST_F(TreeTest, TheOrderIsTheSameInAllEncodings) {
    const std::string expected = qvox("tree $DATA/order-utf8.xml").out;
    for (const char* const line :
         {"\n  processingInstruction target=\"xml\" data=\"version=\\\"1.0\\\" "
          "encoding=\\\"UTF-8\\\"\"\n",
          "\n      element name=\"d:受取人\" namespaceURI=\"urn:example:delivery\""
          " localName=\"受取人\"\n        text data=\"𠮷田　邊彦\"\n"}) {
        EXPECT_NE(expected.find(line), std::string::npos) << line;
    }
    for (const char* const encoding :
         {"utf16le-bom", "utf16be-bom", "utf16le", "utf16be", "sjis", "eucjp", "iso2022jp"}) {
        const Result result = shell("$QVOX tree $DATA/order-" + std::string(encoding) +
                                    ".xml | sed '2s/\\(encoding=.\"\\)[^\\\\]*/\\1UTF-8/'");
        EXPECT_EQ(result, (Result{0, expected, ""})) << encoding;
    }
}

// Nothing but the report of a bad document, which has its place where the document can be read
// again.
TEST_F(TreeTest, RefusesABadDocument) {
    file("書.xml", "<a>x<b c='' / ></b></a>");
    file("tags.xml", "<a>\n  <b></a>");
    const struct {
        const char* command;
        const char* report;
    } cases[] = {
        {"$QVOX tree 書.xml", "書.xml:1:14: 書.xml : parse error (/) at line 1, col 14\n"},
        {"$QVOX tree tags.xml", "tags.xml:2:9: end tag (a) not match to start tag (b)\n"},
        {"cat tags.xml | $QVOX tree /dev/stdin",
         "/dev/stdin: end tag (a) not match to start tag (b)\n"},
        {"$QVOX tree missing.xml", "missing.xml: file (missing.xml) cannot open\n"},
        {"$QVOX tree .", ".: file (.) cannot open\n"},
    };
    for (const auto& [command, report] : cases) {
        EXPECT_EQ(shell(command), (Result{1, "", report})) << command;
    }
}

TEST_F(TreeTest, WrongUseAndLostOutput) {
    file("good.xml", "<a/>");
    for (const char* const arguments :
         {"tree", "tree good.xml good.xml", "tree --namespace-prefixes good.xml"}) {
        const Result result = qvox(arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_EQ(result.out, "") << arguments;
        EXPECT_NE(result.err, "") << arguments;
    }
    EXPECT_NE(qvox("tree --help").out.find("--no-namespaces"), std::string::npos);
    EXPECT_EQ(shell("$QVOX tree good.xml >/dev/full"),
              (Result{2, "", "qvox: cannot write to standard output: No space left on device\n"}));
}

// What the printer writes, cut into lines, of which only the first ones and the last one are kept.
class Lines {
public:
    static constexpr std::size_t KEPT = 50;

    Lines() : stream(fopencookie(this, "w", {nullptr, take, nullptr, nullptr})) {}
    Lines(const Lines&) = delete;
    Lines& operator=(const Lines&) = delete;
    ~Lines() { std::fclose(stream); }

    void print(qvox::Node* root) {
        Output output(stream);
        print_tree(root, output);
        output.flush();
    }

    std::vector<std::string> first;
    std::string last;
    std::size_t count = 0;

private:
    static ssize_t take(void* lines, const char* bytes, std::size_t size) {
        std::for_each(bytes, bytes + size,
                      [lines](char byte) { static_cast<Lines*>(lines)->take(byte); });
        return static_cast<ssize_t>(size);
    }
    void take(char byte) {
        if (byte != '\n') {
            line += byte;
            return;
        }
        ++count;
        if (first.size() < KEPT) first.push_back(line);
        last.swap(line);
        line.clear();
    }

    std::string line;
    std::FILE* stream;
};

class TreePrinterTest : public testing::Test {
protected:
    ~TreePrinterTest() override { parser.free(document); }

    qvox::DOMParser parser;
    qvox::Document* document = parser.createDocument();
};

TEST_F(TreePrinterTest, AMillionLevels) {
    constexpr std::size_t LEVELS = 1000000;
    qvox::Node* node = document->createTextNode("bottom");
    for (std::size_t i = 0; i < LEVELS; ++i) {
        qvox::Node* const outer = document->createElement("a");
        outer->appendChild(node);
        node = outer;
    }
    document->appendChild(node);
    document->appendChild(document->createComment("behind"));

    Lines lines;
    lines.print(document);
    const std::string element = "element name=\"a\" namespaceURI=null localName=null";
    EXPECT_EQ(lines.count, LEVELS + 3);
    EXPECT_EQ(lines.first[31], std::string(62, ' ') + element);
    EXPECT_EQ(lines.first[32], std::string(64, ' ') + element);
    EXPECT_EQ(lines.first[33], std::string(64, ' ') + "(33) " + element);
    EXPECT_EQ(lines.last, "  comment data=\"behind\"");

    Lines subtree;
    subtree.print(node);
    EXPECT_EQ(subtree.count, LEVELS + 1);
    EXPECT_EQ(subtree.last, std::string(64, ' ') + "(1000000) text data=\"bottom\"");
}

TEST_F(TreePrinterTest, NodesThatNoDocumentHas) {
    qvox::Node* const fragment = document->createDocumentFragment();
    qvox::Node* const reference = fragment->appendChild(document->createEntityReference("e"));
    reference->appendChild(document->createTextNode(qvox::Xstring::Null));
    auto* const element = document->createElementNS("u", "p:a");
    fragment->appendChild(element);
    element->setAttributeNodeNS(document->createAttributeNS("u", "q:b"));
    element->setAttribute("c", "1");

    Lines lines;
    lines.print(fragment);
    EXPECT_EQ(lines.first,
              (std::vector<std::string>{
                  "documentFragment", "  entityReference name=\"e\"", "    text data=null",
                  "  element name=\"p:a\" namespaceURI=\"u\" localName=\"a\"",
                  "    attribute name=\"q:b\" namespaceURI=\"u\" localName=\"b\" value=null"
                  " defaulted",
                  "    attribute name=\"c\" namespaceURI=null localName=null value=\"1\""}));
    parser.freeNode(fragment);
}

}  // namespace
