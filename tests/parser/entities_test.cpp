// General entities: what their text may do to the markup around it, which files are opened, and how
// they are read and closed.
#include <algorithm>
#include <filesystem>

#include "parser/tables.h"
#include "support/encode.h"
#include "support/system.h"

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

namespace fs = std::filesystem;

// The events behind the type of a document in which &e; is "e.ent".
std::string content_with_file(const std::string& root, const std::string& file,
                              const std::string& declaration = "") {
    return behind("]; ",
                  events_of(declaration + "<!DOCTYPE r [<!ENTITY e SYSTEM 'e.ent'>]>\n" + root,
                            {{"e.ent", file}}));
}

TEST(EntityFiles, Content) {
    const std::pair<std::string, std::string> cases[] = {
        {"text\r\n\r", "&e; 'atext\\n\\nb'"},
        {"<?xml encoding='utf-8'?><c/>", "<e; 'a'; >e; (c; ); 'b'"},
        {"<?xml version='1.0' encoding='Shift_JIS' ?>\n\x83\\\xB1", "<e; 'a'; >e; '\\nソｱb'"},
        {"<?xml encoding='EUC-JP'?>\xA5\xBD", "<e; 'a'; >e; 'ソb'"},
        // The file ends between its escape sequences, which is nothing to the document.
        {"<?xml encoding='ISO-2022-JP'?>\x1B$B\x25\x3D", "<e; 'a'; >e; 'ソb'"},
        {utf16be(u"\uFEFFソ\r"), "&e; 'aソ\\nb'"},
        {utf16le(u"<?xml version='1.0' encoding='UTF-16'?>x"), "<e; 'a'; >e; 'xb'"},
        {"<?x?>y", "<e; 'a'; ?'x' -; >e; 'yb'"},
    };
    for (const auto& [file, events] : cases) {
        const std::string root = "<r>a&e;b</r>";
        const std::string expected = "(r; " + events + "; )";
        EXPECT_EQ(content_with_file(root, file), expected);
        EXPECT_EQ(content_with_file(root, file, "<?xml version='1.0' encoding='iso-2022-jp'?>"),
                  expected);
    }
    // A text declaration in replacement text has no file whose decoder it could change.
    EXPECT_EQ(behind("]; ", events_of("<!DOCTYPE r [<!ENTITY x SYSTEM 'x.ent'><!ENTITY e \"&#38;x;"
                                      "&#60;?xml encoding='EUC-JP'?>hi\">]><r>&e;, you</r>",
                                      {{"x.ent", "<x>text</x>"}})),
              "(r; <e; <x; (x; 'text'; >x; ); >e; 'hi, you'; )");
    // In a value and in a declaration a text declaration is text like any other.
    EXPECT_EQ(content_with_file("<r a='[&e;&e;]'/>", "<?xml?>\n"),
              "&e; &e; (r [a='[<?xml?> <?xml?> ]']; )");
    EXPECT_EQ(events_of("<!DOCTYPE r [<!ENTITY % m SYSTEM 'm.ent'><!ELEMENT r %m;><!ENTITY m 'M'>"
                        "<!ENTITY v SYSTEM 'v.ent'><!ENTITY w '[&v;%m;]'>]><r/>",
                        {{"m.ent", "(a,b)\n"}, {"v.ent", "<?xml?>%n;&m;"}}),
              "startDTD 'r' - -; external '%m' - 'm.ent'; &%m; element 'r' '(a,b)'; internal 'm' "
              "'M'; external 'v' - 'v.ent'; <v; warning 9 1:54 'entity name (%n) not found'; &m; "
              ">v; &%m; internal 'w' '[<?xml?>M(a,b)\\n]'; ]; (r; )");
}

// A file name counts from the working directory, also inside a file of another folder.
TEST(EntityFiles, Names) {
    fs::create_directory("sub");
    write_file("sub/deep.ent", "deep&f;");
    write_file("f.ent", "here");
    write_file("sub/f.ent", "there");
    expect_rows(R"(
SYSTEM 'f.ent'             => &e; '[here]'
SYSTEM 'file:./sub/f.ent'  => &e; '[there]'
SYSTEM 'f.ent' NDATA n     => &e; '[here]'
SYSTEM 'sub/deep.ent'      => <e; &f; >e; '[deephere]'
PUBLIC 'p' 'f.ent'         => '[]'
SYSTEM 'none.ent'          => warning 1 2:4 'system id (none.ent) can\'t open'; '[]'
SYSTEM 'FILE:f.ent'        => warning 1 2:4 'system id (FILE:f.ent) can\'t open'; '[]'
SYSTEM 'file:file:f.ent'   => warning 1 2:4 'system id (file:file:f.ent) can\'t open'; '[]'
SYSTEM ''                  => warning 1 2:4 'system id () can\'t open'; '[]'
SYSTEM 'sub'               => warning 1 2:4 'system id (sub) can\'t open'; '[]'
)",
                [](const std::string& part) {
                    const std::string events =
                        events_of("<!DOCTYPE r [<!ENTITY f SYSTEM 'f.ent'><!ENTITY e " + part +
                                  ">]>\n<r>[&e;]</r>");
                    return behind("]; (r; ", in_front_of("; )", events));
                });
}

// Each file has lines of its own, and the reports name the document all the same. The reference
// stands on line 2, and its level begins before the file is looked at.
TEST(EntityFiles, LinesAndRefusals) {
    const char* const table = R"(
\n\n\n<c/>                 => \n<1  => 6 3:1 'doc.xml : parse error (<1) at line 3, col 1'
\n\n\n<c/>\n               => <1    => 6 2:1 'doc.xml : parse error (<1) at line 2, col 1'
\n\n <1>                   =>       => 6 3:2 'doc.xml : parse error (<1) at line 3, col 2'
\n<c>\n                    => </d>  => 10 2:4 'end tag (d) not match to start tag (c)'
<?xml version='1.0'?>      =>       => 6 2:26 'doc.xml : parse error (?) at line 2, col 26'
\n<?xml encoding='utf-8'?> =>       => 11 2:3 'xml decl must appear first line : doc.xml (xml) at
  line 2, col 6'
<?xml encoding='x-sjis'?>  =>       => 11 1:22 'not supported encoding : doc.xml (x-sjis) at line 1,
  col 29'
\n\né                       =>       => 8 3:4 'not supported UTF-8 char (c3)'
\n\n<!--c                  =>       => 12 2:5 'unterminated comment : doc.xml (c) at line 2, col 5'
=> => 7 2:4 'not XML file'
<c>                        =>       => 7 2:4 'not XML file'
)";
    for (const Row& row : rows_of(table)) {
        const std::string events = content_with_file("<r>&e;" + row.at(1), row[0]);
        EXPECT_EQ(replaced(events.substr(0, 6), "<", "&"), "(r; &e");
        EXPECT_EQ(behind("error ", events), row.at(2));
    }
}

// A pipe would make the parse wait; a parse may also be told to open no file at all.
TEST(EntityFiles, AreRegularFiles) {
    ASSERT_EQ(os::make_pipe("pipe"), os::HAS_PIPES);
    fs::create_directory("folder");
    write_file("plain", "<!--c-->");
    for (const std::string name : {"pipe", "folder", os::NULL_DEVICE, "plain"}) {
        for (const bool opensFiles : {true, false}) {
            const std::string id = " SYSTEM '" + name + "'";
            write_file("doc.xml", "<!DOCTYPE r" + id + " [<!ENTITY e" + id + "><!ENTITY % p" + id +
                                      "><!ENTITY v '%p;'>]><r>&e;</r>");
            qvox::SAXParser parser;
            parser.setFeature(qvox::FEATURE_EXTERNAL_FILES, opensFiles);
            const std::string output = observe([&] { parser.parse("doc.xml"); }).output;
            EXPECT_EQ(std::count(output.begin(), output.end(), '\n'),
                      name == "plain" && opensFiles ? 0 : 3)
                << name << output;
        }
    }
}

// A disk that breaks down while the document, its subset or an entity is being read.
TEST(EntityFiles, FailedReads) {
    const std::string rest = std::string(300000, ' ') + "<!--end-->";
    write_file("s.dtd", "<!--s-->" + rest);
    write_file("e.ent", "<!--e-->" + rest);
    write_file("doc.xml", "<!DOCTYPE r SYSTEM 's.dtd' [<!ENTITY e SYSTEM 'e.ent'><!--i-->]><r>&e;" +
                              rest + "</r>");
    std::FILE* const unreadable = std::fopen("unreadable", "wb");
    const int before = os::next_descriptor();
    for (const auto& [comment, name] :
         {std::pair(1, "doc.xml"), {2, "s.dtd"}, {4, "e.ent"}}) {  // behind which it can't be read
        qvox::SAXParser parser;
        Recorder recorder;
        int document = 0;
        int external = 0;
        recorder.when("comment '", [&, last = comment, count = 0]() mutable {
            if (++count == 1) external = os::next_descriptor();
            // The parser closes it, whatever it leads to.
            if (count == last)
                os::lead(last == 1 ? document : external, os::descriptor_of(unreadable));
        });
        recorder.attach(parser);
        const auto outcome = observe([&] {
            document = os::next_descriptor();
            parser.parse("doc.xml");
        });
        EXPECT_EQ(outcome.message, "file (" + std::string(name) + ") cannot read");
        EXPECT_EQ(os::next_descriptor(), before);
    }
    std::fclose(unreadable);
}

}  // namespace
}  // namespace qvox_test
