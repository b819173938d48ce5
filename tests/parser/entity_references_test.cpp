// References to general entities in content and in attribute values, and what the text of an entity
// may do to the markup around it.
#include "parser/tables.h"

namespace qvox_test {
namespace {

// The events of the document behind its type, where &e; has the text and %e; another.
std::string content_of(const std::string& text, const std::string& root) {
    return behind("]; ",
                  events_of("<!DOCTYPE r [<!ENTITY % e 'none'><!ENTITY ex 'y'><!ENTITY lt 'x'>"
                            "<!ENTITY e \"" +
                            text + "\"><!ENTITY e 'none'>]>\n" + root));
}

void expect_contents(const char* table) {
    for (const Row& row : rows_of(table)) {
        EXPECT_EQ(content_of(row[0], row.at(1)), row.at(2)) << row[0] << ' ' << row[1];
    }
}

// The lexer reads a character beyond a tag: often the end of the entity. Nothing ties the ends of
// an entity to those of the markup.
TEST(EntityReferences, Content) {
    expect_contents(R"(
x            => <r>a&e;b</r>            => (r; &e; 'axb'; )
=> <r>&e;&e;a&e;</r> => (r; &e; &e; &e; 'a'; )
[&#38;ex;]   => <r>&e;</r>              => (r; <e; &ex; >e; '[y]'; )
<c/>         => <r>&e;</r>              => (r; &e; (c; ); )
&#60;c/>     => <r>a&e;b</r>            => (r; <e; 'a'; >e; (c; ); 'b'; )
<c></c>&#32; => <r>&e;b</r>             => (r; <e; (c; ); >e; ' b'; )
<!--c-->     => <r>&e;</r>              => (r; &e; !'c'; )
<?p d?>      => <r>&e;</r>              => (r; &e; ?'p' 'd'; )
<![CDATA[&#38;e;]]> => <r>&e;</r>       => (r; <e; startCDATA; >e; '&e;'; endCDATA; )
<c>          => <r>&e;x</c></r>         => (r; &e; (c; 'x'; ); )
</c>         => <r><c>x&e;</r>          => (r; (c; <e; 'x'; >e; ); )
</r>         => <r>&e;\s                => (r; &e; )
<c           => <r>&e;d a='1'/></r>     => (r; &e; (cd [a='1']; ); )
<!--x        => <r>&e;y--></r>          => (r; &e; !'xy'; )
<![CDATA[x   => <r>&e;y]]></r>          => (r; <e; startCDATA; >e; 'xy'; endCDATA; )
&#38;        => <r>&e;ex;</r>           => (r; &e; &ex; 'y'; )
&#38;#6      => <r>&e;0;b</r>           => (r; &e; '<b'; )
x            => <r>&lt;%e;</r>          => (r; &lt; '<%e;'; )
x            => <r>a&u;b&u.;</r>        => (r; warning 9 2:4 'entity name (u) not found';
  warning 9 2:4 'entity name (u.) not found'; 'ab'; )
)");
}

// A quote in an entity's text ends the value, and the rest of the text is markup.
TEST(EntityReferences, AttributeValues) {
    expect_contents(R"(
v            => <r a='x&e;y'/>          => &e; (r [a='xvy']; )
=> <r a='&e;&e;'/> => &e; &e; (r [a='']; )
<c/>         => <r a='&e;<%e;'/>        => &e; (r [a='<c/><%e;']; )
1\n2\t3      => <r a='&e;'/>            => &e; (r [a='1 2 3']; )
&#38;#39;&#38;#38; => <r a='&e;e;'/>    => &e; (r [a='\'&e;']; )
x'           => <r a='1&e; b='2'/>      => &e; (r [a='1x'] [b='2']; )
' b='2       => <r a='1&e;'/>           => &e; (r [a='1'] [b='2']; )
x            => <r a="&quot;&lt;&gt;&amp;&apos;&u;"/> => &quot; &lt; &gt; &amp; &apos;
  warning 9 2:6 'entity name (u) not found'; (r [a='"<>&\'']; )
)");
}

TEST(EntityReferences, Refusals) {
    const char* const table = R"(
]]           => <r>a&e;></r>            => 6 2:4 'unexpected token found : doc.xml (]]>) at line 2,
  col 8'
>            => <r>]]&e;</r>            => 6 2:4 'unexpected token found : doc.xml (]]>) at line 2,
  col 8'
'            => <r a='x&e;y'/>          => 6 2:11 'doc.xml : parse error (y) at line 2, col 11'
</c>         => <r>&e;</r>              => 10 2:6 'end tag (c) not match to start tag (r)'
<c>          => <r>&e;</r>              => 10 2:10 'end tag (r) not match to start tag (c)'
&#38;        => <r>&e; ;  => 9 2:4 'illegal entity reference : doc.xml (& ) at line 2, col 7'
&#38;#6      => <r>&e;<   => 9 2:4 'illegal character reference : doc.xml (&#6) at line 2, col 7'
<            => <r>&e;\s                => 6 2:4 'doc.xml : parse error (< ) at line 2, col 4'
v            => <r>&e;                  =>
  12 2:4 'unterminated char data : doc.xml (v) at line 2, col 6'
v            => <r a='&e;               =>
  12 2:6 'unterminated literal : doc.xml (v) at line 2, col 9'
v            => &e;<r/>                 => 6 2:1 'doc.xml : parse error () at line 2, col 1'
v            => <r &e;/>                => 6 2:4 'doc.xml : parse error () at line 2, col 4'
)";
    for (const Row& row : rows_of(table)) {
        EXPECT_EQ(behind("error ", content_of(row[0], row.at(1))), row.at(2));
    }
}

}  // namespace
}  // namespace qvox_test
