// What a parse makes of a document, and what a DOMParser frees.
#include <tuple>

#include <gtest/gtest.h>

#include "support/encode.h"
#include "support/tables.h"
#include "support/tree_text.h"

namespace qvox_test {
namespace {

using qvox::Document;
using qvox::DOMParser;
using qvox::Node;

// The tree of a document in the file "doc.xml", beside a file "e.xml"; or code and message.
std::string parsed(DOMParser& parser, const std::string& text, const std::string& entity = "") {
    write_file("doc.xml", text);
    write_file("e.xml", entity);
    std::string tree;
    const std::string raised = raised_by([&] {
        Document* const document = parser.parse("doc.xml");
        tree = tree_text(document);
        parser.free(document);
    });
    return raised + tree;
}

TEST(DomParser, Trees) {
    const char* const table = R"~(
<a/> => /(a)
<a>x<![CDATA[y]]>z</a> => /(a('x' ='y' 'z'))
<a><![CDATA[<b>]]><![CDATA[]]]]></a> => /(a(='<b>' =']]'))
<a> <b/>\n<c> </c> </a> => /(a(' ' b '\n' c(' ') ' '))
<a>x&#x3B1;&amp;y</a> => /(a('xα&y'))
<a>x<!--c-->y<?p d?>z<?q?></a> => /(a('x' !'c' 'y' ?p'd' 'z' ?q-))
<!--c--><?p\s d ?><a/><!----><?q ?> => /(!'c' ?p'd ' a !'' ?q'')
<?xml version='1.0' encoding='UTF-8' standalone='yes'?>\n<a/>
  => /(?xml'version="1.0" encoding="UTF-8" standalone="yes"' a)
<a b='1' c="2" b='3'/> => /(a[c='2' b='3'])
<a xmlns='d' xmlns:p='u' p:x='1' y='2'><p:b z='3' p:z='4'/></a>
  => /({d}a[xmlns='d' xmlns:p='u' {u}p:x='1' y='2']({u}p:b[z='3' {u}p:z='4']))
<!DOCTYPE a [<!--c--><!ELEMENT a ANY><?p d?><!ENTITY e 'v'>]><a>x&e;y</a>
  => /(%a(!'c' ?p'd') a('xvy'))
<!DOCTYPE a [<!ENTITY e 'v<b>w</b>'>]><a>x&e;y</a> => /(%a a('xv' b('w') 'y'))
<!DOCTYPE a [<!ATTLIST a d CDATA 'def' n NMTOKEN #IMPLIED>]><a x='1'/>
  => /(%a a[x='1' d='def'*])
<!DOCTYPE a [<!ENTITY e SYSTEM 'e.xml'>]><a>x&e;y</a> => /(%a a('xtexty'))
<a>x<?xml version='1.0' encoding='UTF-8'?>y</a> => /(a('x' 'y'))
)~";
    DOMParser parser;
    expect_rows(table, [&](const std::string& text) { return parsed(parser, text, "text"); });
    // A text declaration splits the text around it, also where an entity begins.
    EXPECT_EQ(parsed(parser, "<!DOCTYPE a [<!ENTITY e SYSTEM 'e.xml'>]><a>x&e;y</a>",
                     "<?xml version='1.0' encoding='UTF-8'?>z"),
              "/(%a a('x' 'zy'))");
}

TEST(DomParser, Features) {
    DOMParser parser;
    EXPECT_TRUE(parser.getFeature(qvox::FEATURE_NAMESPACE_PREFIXES));
    EXPECT_EQ(parser.getType(), qvox::Parser::DOM_PARSER);
    for (const auto& [namespaces, prefixes, tree] :
         {std::tuple(true, true, "/({d}a[xmlns='d' xmlns:p='u' {u}p:x='1'])"),
          {true, false, "/({d}a[{u}p:x='1'])"},
          {false, true, "/(a[xmlns='d' xmlns:p='u' p:x='1'])"},
          {false, false, "/(a[p:x='1'])"}}) {
        parser.setFeature(qvox::FEATURE_NAMESPACES, namespaces);
        parser.setFeature(qvox::FEATURE_NAMESPACE_PREFIXES, prefixes);
        EXPECT_EQ(parsed(parser, "<a xmlns='d' xmlns:p='u' p:x='1'/>"), tree);
    }
}

TEST(DomParser, DocumentType) {
    write_file("doc.xml",
               "<!DOCTYPE r PUBLIC 'pub' 'e.xml' [\n<!ELEMENT r (a|b)*>"
               "<!ATTLIST r x (u|v) 'u' y CDATA #REQUIRED z ID #IMPLIED w CDATA #FIXED 'f'>\n"
               "<!ENTITY e 'v'><!ENTITY % p '<!--in-->'><!ENTITY q PUBLIC 'pid' 'sys'>"
               "<!ENTITY g SYSTEM 'pic' NDATA gif><!ENTITY h PUBLIC 'pid' 'pic' NDATA gif>"
               "<!ENTITY e 'second'><!NOTATION gif SYSTEM 'viewer'><!NOTATION pub PUBLIC 'np'>"
               "<!NOTATION both PUBLIC 'np' 'ns'><!NOTATION gif PUBLIC ''>]><r y='&e;' b='&e;'/>");
    write_file("e.xml", "<!ELEMENT late EMPTY>");
    DOMParser parser;
    Document* const document = parser.parse("doc.xml");
    qvox::DocumentType* const doctype = document->getDoctype();
    EXPECT_TRUE(doctype->getOwnerDocument() == nullptr && doctype->getParentNode() == document);
    const auto identifiers = [](const qvox::DocumentType& type) {
        return quoted(type.getName()) + quoted(type.getPublicId()) + quoted(type.getSystemId());
    };
    EXPECT_EQ(identifiers(*doctype), "'r''pub''e.xml'");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(joined(plain(doctype->getInternalSubset())),
                  "<!ELEMENT r (a|b)*>; <!ATTLIST r x (u|v) \"u\" y CDATA #REQUIRED z ID #IMPLIED "
                  "w CDATA #FIXED \"f\">; <!ENTITY e \"v\">; <!ENTITY % p \"<!--in-->\">; "
                  "<!ENTITY q PUBLIC \"pid\" \"sys\">; <!ENTITY g SYSTEM \"pic\" NDATA gif>; "
                  "<!ENTITY h PUBLIC \"pid\" \"pic\" NDATA gif>; <!ENTITY e \"second\">; "
                  "<!NOTATION gif SYSTEM \"viewer\">; <!NOTATION pub PUBLIC \"np\">; <!NOTATION "
                  "both PUBLIC \"np\" \"ns\">; <!NOTATION gif PUBLIC \"\">; <!ELEMENT late EMPTY>");
    }
    // The later declaration takes the place at the end; its name still means the first.
    std::string declared;
    for (const qvox::NamedNodeMap* const map : {doctype->getEntities(), doctype->getNotations()}) {
        for (int i = 0; i < map->getLength(); ++i) {
            const Node* const node = map->item(i);
            EXPECT_TRUE(node->getOwnerDocument() == document && !node->hasChildNodes());
            declared += tree_text(node) + ' ' + identifiers_of(*node) + "; ";
        }
    }
    EXPECT_EQ(declared,
              "$%p - - -; $q 'pid' 'sys' -; $g - 'pic' 'gif'; $h 'pid' 'pic' 'gif'; $e - - -; "
              "~pub 'np' -; ~both 'np' 'ns'; ~gif - -; ");
    EXPECT_EQ(quoted(document->getDocumentElement()->getAttribute("b")), "'v'");

    // A copy has neither maps nor declarations.
    auto* const clone = static_cast<qvox::DocumentType*>(doctype->cloneNode(true));
    EXPECT_EQ(clone->getEntities(), nullptr);
    EXPECT_TRUE(clone->getInternalSubset().isNull());
    EXPECT_EQ(identifiers(*clone), "'r''pub''e.xml'");
    parser.freeNode(clone);
    parser.free(document);
}

// A document in memory never loads a subset. Its units are not converted, and a text declaration
// in it has no file whose decoder it could change.
TEST(DomParser, Memory) {
    write_file("s.dtd", "<!ENTITY e 'v'>");
    write_file("x.ent", "text");
    const char16_t* const cases[][2] = {
        {u"<!DOCTYPE a SYSTEM 's.dtd'><a>\u0101あ</a>", u"/(%a a('\u0101あ'))"},
        {u"<!DOCTYPE a PUBLIC 'p' 'none.dtd'><a/>", u"/(%a a)"},
        {u"<!DOCTYPE a [<!ENTITY e \"&#60;?xml encoding='UTF-16'?>x\">]><a>&e;</a>",
         u"/(%a a('x'))"},
        // Behind the end of an external entity its encoding stays the document's, in name alone.
        {u"<!DOCTYPE a [<!ENTITY x SYSTEM 'x.ent'>]><a>&x;<?xml encoding='Shift_JIS'?>あ"
         u"<?xml encoding='UTF-8'?></a>",
         u"QVOX 11 encoding decl not match to XML file format : (memory) (UTF-8) at line 1, col "
         u"104"},
        {u"<a>\r\nあ\u0101&;", u"QVOX 9 illegal entity reference : (memory) (&;) at line 2, col 6"},
    };
    DOMParser parser;
    for (const auto& [text, expected] : cases) {
        std::u16string memory = text;
        Document* document = nullptr;
        const std::string raised = raised_by(
            [&] { document = parser.parse(reinterpret_cast<unsigned short*>(memory.data())); });
        EXPECT_EQ(document != nullptr ? tree_text(document) : raised, utf8(expected));
        parser.free(document);
    }
}

TEST(DomParser, TreesOutliveTheParser) {
    Document* first = nullptr;
    Document* second = nullptr;
    {
        DOMParser parser;
        first = parse_document(parser, "<a x='1'>t</a>");
        EXPECT_EQ(parsed(parser, "<a><b></a>").substr(0, 5), "QVOX ");
        qvox::InputSource source("doc.xml");
        write_file("doc.xml", "<c/>");
        second = parser.parse(source);
    }
    EXPECT_EQ(tree_text(first) + tree_text(second), "/(a[x='1']('t'))/(c)");
    EXPECT_EQ(first->getImplementation(), second->getImplementation());
    DOMParser parser;
    EXPECT_EQ(parser.getImplementation(), first->getImplementation());
    parser.free(first);
    parser.free(second);
}

TEST(DomParser, Freeing) {
    Tree tree("%d a(b)");
    const char* const withParent = "QVOX 4 attempt to free node with parent";
    for (const char* const name : {"d", "a", "b"}) {
        EXPECT_EQ(raised_by([&] { tree.parser.freeNode(tree[name]); }), withParent);
    }
    EXPECT_EQ(tree.text(), "/(%d a(b))");
    tree.parser.freeNode(nullptr);
    tree.parser.free(static_cast<Document*>(nullptr));
    tree.parser.freeNode(tree.parser.createDocument());
    tree.parser.freeNode(tree["a"]->removeChild(tree["b"]));
}

}  // namespace
}  // namespace qvox_test
