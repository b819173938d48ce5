// External entities: which files are opened, and how they are read and closed.
#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "parser/tables.h"
#include "support/encode.h"
#include "support/system.h"

namespace qvox_test {
namespace {

namespace fs = std::filesystem;

// The events behind the type of a document in which &e; is "e.ent".
std::string content_of(const std::string& root, const std::string& file,
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
        EXPECT_EQ(content_of(root, file), expected);
        EXPECT_EQ(content_of(root, file, "<?xml version='1.0' encoding='iso-2022-jp'?>"), expected);
    }
    // A text declaration in replacement text has no file whose decoder it could change.
    EXPECT_EQ(behind("]; ", events_of("<!DOCTYPE r [<!ENTITY x SYSTEM 'x.ent'><!ENTITY e \"&#38;x;"
                                      "&#60;?xml encoding='EUC-JP'?>hi\">]><r>&e;, you</r>",
                                      {{"x.ent", "<x>text</x>"}})),
              "(r; <e; <x; (x; 'text'; >x; ); >e; 'hi, you'; )");
    // In a value and in a declaration a text declaration is text like any other.
    EXPECT_EQ(content_of("<r a='[&e;&e;]'/>", "<?xml?>\n"),
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
        const std::string events = content_of("<r>&e;" + row.at(1), row[0]);
        EXPECT_EQ(std::regex_replace(events.substr(0, 6), std::regex("<"), "&"), "(r; &e");
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
            write_file("doc.xml", "<!DOCTYPE r SYSTEM '" + name + "' [<!ENTITY e SYSTEM '" + name +
                                      "'><!ENTITY % p SYSTEM '" + name +
                                      "'><!ENTITY v '%p;'>]><r>&e;</r>");
            qvox::SAXParser parser;
            parser.setFeature(qvox::FEATURE_EXTERNAL_FILES, opensFiles);
            Recorder recorder;
            recorder.attach(parser);
            const std::string output = observe([&] { parser.parse("doc.xml"); }).output;
            const auto warnings = std::count(output.begin(), output.end(), '\n');
            EXPECT_EQ(warnings, name == "plain" && opensFiles ? 0 : 3) << name << output;
            EXPECT_EQ(recorder.events.find("comment 'c'") != std::string::npos, warnings == 0);
            EXPECT_NE(recorder.events.find("externalEntityDecl 'e' - '" + name), std::string::npos);
        }
    }
}

// However a parse ends, no file stays open. What is innermost stands three files deep.
TEST(EntityFiles, AreClosed) {
    struct Thrower : Recorder {
        void comment(const Text& text) override {
            if (text == "c") throw std::runtime_error("stop");
        }
        void processingInstruction(const Text&, const Text&) override { throw 1; }
        void warning(const Exception& exception) override { throw exception; }
    } thrower;
    qvox::SAXParser parser;
    thrower.attach(parser);
    const std::ptrdiff_t before = os::open_descriptors();
    write_file("f.ent", "&g; ");
    write_file("g.ent", "&h; ");
    write_file("doc.xml",
               "<!DOCTYPE r SYSTEM 's.dtd' [<!ENTITY f SYSTEM 'f.ent'><!ENTITY g SYSTEM "
               "'g.ent'><!ENTITY h SYSTEM 'h.ent'><!ENTITY % h SYSTEM 'h.ent'>]><r>&f;</r>");
    // The subset, and what is innermost.
    for (const Row& row : cells_of(R"(
<!----> => text  <!----> => <c>  <!----> => <1>  <!----> => <?p?>  <!----> => <!--c-->
<!----> => &u;  <!----> => &f;  <!----> => no  <!----> => <a b='  <!----> => <?xml encoding='x'?>
<!ELEMENT r %h;> => text  <!ENTITY v '%h;&#0;'> => text  <!ENTITY v '%h;&u;'> => text
<!--c--> => text  <!ELEMENT r => text
)")) {
        write_file("s.dtd", row[0]);
        write_file("h.ent", row[1] + (row[1] == "text" ? "" : " "));
        bool isGood = true;
        output_of([&] {
            try {
                parser.parse("doc.xml");
            } catch (...) {
                isGood = false;
            }
        });
        EXPECT_EQ(isGood, row[0] == "<!---->" && row[1] == "text") << row[0] << row[1];
        EXPECT_EQ(os::open_descriptors(), before) << row[0] << row[1];
    }
}

}  // namespace
}  // namespace qvox_test
