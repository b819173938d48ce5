// The events of whole documents without a document type declaration.
#include "parser/tables.h"
#include "support/encode.h"

namespace qvox_test {
namespace {

TEST(Document, AroundTheRootElement) {
    expect_documents(R"(
<a\n\t></a\r > => (a; )
\r\n<!---->\t<?p?><a/>\n<?q r?> <!--c-->\n => !''; ?'p' -; (a; ); ?'q' 'r'; !'c'
<?xml version = '1.0'  encoding\n=\n"utf-8" standalone='no' ?>\n<a/> => (a; )
<?xml version='a.b:c-d_e' standalone='yes'?><!--c--><a/> => !'c'; (a; )
)");
    for (const std::u16string name : {u"_", u"a.-1_", u"日本々ー", u"〇\u00B7e\u0301"}) {
        EXPECT_EQ(events_of(utf16le(u"\uFEFF<" + name + u"/>")), '(' + utf8(name) + "; )");
    }
}

TEST(Document, Text) {
    expect_documents(R"(
<a> </a>                         => (a; ' '; )
<a>\n<b/>\r\n</a>                => (a; '\n'; (b; ); '\n'; )
<a>> ]] ]>] %p; ' " - --> ?></a> => (a; '> ]] ]>] %p; \' " - --> ?>'; )
<a>&#65;&#x41;&#x4a;&#x4A;&#00065;</a> => (a; 'AAJJA'; )
<a>&#60;b/>&#38;lt;</a>          => (a; '<b/>&lt;'; )
<a>&#9;&#10;|&#13;|&#13;&#10;|</a> => (a; '\t\n|\n|\n|'; )
<a>x&lt;y</a>                    => (a; &lt; 'x<y'; )
<a>&lt;b/>&amp;lt;</a>           => (a; &lt; &amp; '<b/>&lt;'; )
<a>&gt;&apos;&quot;</a>          => (a; &gt; &apos; &quot; '>\'"'; )
<a>x<!--c-->&lt;<?p?>y</a>       => (a; 'x'; !'c'; &lt; '<'; ?'p' -; 'y'; )
)");
    EXPECT_EQ(events_of("<a>&#xFFFD;&#xE000;&#xD7FF;&#x10000;&#134071;&#x10FFFF;</a>"),
              utf8(u"(a; '\uFFFD\uE000\uD7FF\U00010000𠮷\U0010FFFF'; )"));
}

// On the first line a target is "xml" only in just this form.
TEST(Document, MarkupInContent) {
    expect_documents(R"(
<a><!--&--><!--%p;--><!-- - -> --></a> => (a; !'&'; !'%p;'; !' - -> '; )
<a><!-->--><!--->--><!--<a>&lt;]]>--></a> => (a; !'>'; !'->'; !'<a>&lt;]]>'; )
<a>x<![CDATA[]]>y</a>            => (a; 'x'; startCDATA; ''; endCDATA; 'y'; )
<a><![CDATA[&lt;<b>]]></a>       => (a; startCDATA; '&lt;<b>'; endCDATA; )
<a><![CDATA[%]] >]]]><![CDATA[>]]></a>
  => (a; startCDATA; '%]] >]'; endCDATA; startCDATA; '>'; endCDATA; )
<a><?xml version='1.0' encoding='UTF-8'?>x<?xml encoding='utf-8' ?></a> => (a; 'x'; )
<a><?t?>\n<?t?></a>              => (a; ?'t' -; '\n'; ?'t' -; )
<a><?t ?>\n<?t ?></a>            => (a; ?'t' ''; '\n'; ?'t' ''; )
<a><?t \n\t&lt;%p? >??><?t >?></a> => (a; ?'t' '&lt;%p? >?'; ?'t' '>'; )
<a><?xMl?><?xML d?><?x?></a>     => (a; ?'xMl' -; ?'xML' 'd'; ?'x' -; )
<a><?xml-a?>\n<?xml-a?></a>      => (a; ?'xml-a' -; '\n'; ?'xml-a' -; )
)");
}

// A predefined entity is reported while the tag is being read, and its quote is data.
TEST(Document, AttributeValues) {
    expect_documents(R"~(
<a\nb = "'" />                   => (a [b='\'']; )
<a b='"&#39;&#34;&#60;<%p;'/>    => (a [b='"\'"<<%p;']; )
<a b='' c='  x  y  '/>           => (a [b=''] [c='  x  y  ']; )
<a b='x\t\n\r\n\ry'/>            => (a [b='x  y']; )
<a b='x\n\t\ny'/>                => (a [b='x   y']; )
<a b='\t&#9;&#10;&#13;&#10;x&#13;'/> => (a [b='   x ']; )
<a b='&#x20BB7;'/>               => (a [b='𠮷']; )
<a b="&quot;&lt;"/>              => &quot; &lt; (a [b='"<']; )
)~");
}

// An empty prefix is none, but its declaration isn't that of the default namespace.
TEST(Document, Namespaces) {
    expect_documents(R"(
<a xmlns:p='u' p:b='1' c='2'/> => +'p' 'u'; (a ['u' 'b' 'p:b' - '1'] [c='2']; ); -'p'
<a xmlns='u'><b c=''/></a>
  => +- 'u'; ('u' 'a' 'a'; ('u' 'b' 'b' [c='']; )'u' 'b' 'b'; )'u' 'a' 'a'; --
<a xmlns=''/> => +- ''; ('' 'a' 'a'; )'' 'a' 'a'; --
<p:a b='1' b='2' xmlns:q='v' xmlns:p='u' xmlns:p='w'></p:a> => +'q' 'v'; +'p' 'u'; +'p' 'w';
  ('u' 'a' 'p:a' [b='1'] [b='2']; )'u' 'a' 'p:a'; -'q'; -'p'; -'p'
<p:a xmlns:p='u'><p:a xmlns:p='v'/><p:a/></p:a>
  => +'p' 'u'; ('u' 'a' 'p:a'; +'p' 'v'; ('v' 'a' 'p:a'; )'v' 'a' 'p:a'; -'p';
  ('u' 'a' 'p:a'; )'u' 'a' 'p:a'; )'u' 'a' 'p:a'; -'p'
<p:a xml:lang='ja' xmlnsx='1' xmlns:p='\n '/> => +'p' '  ';
  ('  ' 'a' 'p:a' [- 'lang' 'xml:lang' - 'ja'] [xmlnsx='1']; )'  ' 'a' 'p:a'; -'p'
<p:a/>               => (- 'a' 'p:a'; )
<a: :='1'/>          => (- '' 'a:' [- '' ':' - '1']; )
<:a xmlns='u' :b='1'/> => +- 'u'; ('u' 'a' ':a' [- 'b' ':b' - '1']; )'u' 'a' ':a'; --
<:a xmlns:='u'/>     => +'' 'u'; (- 'a' ':a'; ); -''
<p:b:c xmlns:p='u'/> => +'p' 'u'; ('u' 'b:c' 'p:b:c'; )'u' 'b:c' 'p:b:c'; -'p'
)");
}

TEST(Document, NamespaceFeatures) {
    for (const bool prefixes : {false, true}) {
        Options options;
        options.namespacePrefixes = prefixes;
        const std::string shown = prefixes ? " [- 'xmlns' 'xmlns:p' - 'u'] [xmlns='v']; " : "; ";
        const std::string document = "<p:a p:b='1' xmlns:p='u' xmlns='v'/>";
        EXPECT_EQ(events_of(document, options), "+'p' 'u'; +- 'v'; ('u' 'a' 'p:a' " +
                                                    std::string("['u' 'b' 'p:b' - '1']") + shown +
                                                    ")'u' 'a' 'p:a'; -'p'; --");
        options.namespaces = false;
        EXPECT_EQ(events_of(document, options), "(- - 'p:a' [- - 'p:b' - '1']" + shown + ")");
    }
}

// What is not declared stands for nothing, and is a warning at the token that holds the reference.
TEST(Document, UndeclaredEntities) {
    expect_documents(R"(
<a>x&u;y</a>   => (a; warning 9 1:5 'entity name (u) not found'; 'xy'; )
<a>&u;&u;<b/>&u;</a> => (a; warning 9 1:5 'entity name (u) not found';
  warning 9 1:5 'entity name (u) not found'; (b; ); warning 9 1:15 'entity name (u) not found'; )
<a\nb='&u;'/>  => warning 9 2:3 'entity name (u) not found'; (a [b='']; )
)");
    EXPECT_EQ(parse_bytes("<a>&u;</a>").output, "QVOX warning : entity name (u) not found\n");
}

TEST(Document, AttributeLookups) {
    struct Lookups : Recorder {
        void startElement(const Text&, const Text&, const Text&,
                          const qvox::Attributes& all) override {
            events += std::to_string(all.getLength());
            for (const char* const name : {"b", "p:b", "p:", "c"}) {
                events += ' ' + std::to_string(all.getIndex(name)) + quoted(all.getValue(name)) +
                          quoted(all.getType(name));
            }
            for (const char* const uri : {"u", "", "v"}) {
                events += ' ' + std::to_string(all.getIndex(uri, "b")) +
                          quoted(all.getValue(uri, "b")) + quoted(all.getType(uri, "b"));
            }
            for (const int i : {-1, 3, 2147483647}) {
                events += ' ' + quoted(all.getURI(i)) + quoted(all.getQName(i)) +
                          quoted(all.getLocalName(i)) + quoted(all.getType(i)) +
                          quoted(all.getValue(i));
            }
        }
    } lookups;
    Options options;
    options.recorder = &lookups;
    parse_bytes("<a b='1' b='2' p:b='3' xmlns:p='u'/>", options);
    EXPECT_NE(
        lookups.events.find("3 0'1'- 2'3'- -1-- -1-- 2'3'- 0'1'- -1-- ----- ----- -----endElement"),
        std::string::npos);
}

}  // namespace
}  // namespace qvox_test
