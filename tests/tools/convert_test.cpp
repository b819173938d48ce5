// `qvox convert` and `qvox format`, on whole documents.
#include <string>

#include "run_program.h"
#include "support/encode.h"

namespace {

using qvox_test::utf16le;

class ConvertTest : public ProgramTest {};

TEST_F(ConvertTest, DeclaresTheEncoding) {
    expect_runs(R"(
convert --to UTF-8 => <a>表\n</a> => <a>表\n</a>\n
convert --to Shift_JIS => <a>表\n</a> => <?xml version="1.0"
  encoding="Shift_JIS"?>\r\n<a>\x95\x5C\r\n</a>\r\n
convert --to utf-8 => <?xml version='1.1'?><a>表\n</a> => <?xml version="1.1"
  encoding="UTF-8"?>\n<a>表\n</a>\n
convert --to euc-jp => <?xml version='1.0' encoding='utf-16' standalone='yes'?><a>表\n</a> => <?xml
  version="1.0" encoding="EUC-JP" standalone="yes"?>\r\n<a>\xC9\xBD\r\n</a>\r\n
)");
    for (const auto& [before, behind] :
         {std::pair("", u""),
          {"<?xml version='1.0' standalone='no'?>",
           u"<?xml version=\"1.0\" encoding=\"UTF-16\" standalone=\"no\"?>\r\n"}}) {
        file("f.xml", before + std::string("<a>表\n</a>"));
        EXPECT_EQ(qvox("convert f.xml --to UTF-16 -o out.xml"), (Result{0, "", ""}));
        EXPECT_EQ(contents_of("out.xml"),
                  utf16le(u"\uFEFF" + std::u16string(behind) + u"<a>\u8868\r\n</a>\r\n"));
    }
}

// What would be read as something else as itself is written in another form. The tree that is read
// from the result is the same to the last flag.
TEST_F(ConvertTest, ComesBackAsItWas) {
    const char* const table = R"~(
<a b='\t'>x&#13;\n&#13;&#10;&#9;<!---->&#13;</a> => <a b=" ">x&#xD;\n&#xD;\n\t<!---->&#xD;</a>
# Defaults
<!DOCTYPE a [<!ATTLIST a d CDATA 'x" e CDATA "y' f CDATA ''>]><a g='1'/> => <!DOCTYPE a [\n<!ATTLIST
  a d CDATA "x&#x22; e CDATA &#x22;y" f CDATA "">\n]>\n<a g="1"/>
<!DOCTYPE a [<!ATTLIST a d CDATA '">]><!--'>]><a/> => <!DOCTYPE a [\n<!ATTLIST a d CDATA
  "&#x22;>]>&#x3C;!--">\n]>\n<a/>
<!DOCTYPE a [<!ATTLIST a d CDATA 'a&#60;b &#38;amp; 5% &#38;no;&#13;&#10;\t'>]><a> </a> => <!DOCTYPE
  a [\n<!ATTLIST a d CDATA "a&#x3C;b &#x26;amp; 5% &#x26;no;&#xD;\n\t">\n]>\n<a> </a>
<!DOCTYPE a [<!ATTLIST a d CDATA '1'><!ATTLIST b d CDATA '2'><!ATTLIST a><!ATTLIST a e (x|y)
  #REQUIRED f CDATA '3'><!ATTLIST a g ID #IMPLIED>]><a e='x' d='4'><b/><a f='' g='i'><b
  d='2'/></a></a> => <!DOCTYPE a [\n<!ATTLIST a d CDATA "1">\n<!ATTLIST b d CDATA "2">\n<!ATTLIST
  a>\n<!ATTLIST a e (x|y) #REQUIRED f CDATA "3">\n<!ATTLIST a g ID #IMPLIED>\n]>\n<a e="x" d="4"><b/><a
  f="" g="i"><b d="2"/></a></a>
# Entities
<!DOCTYPE a [<!ENTITY e 'x&#38;lost;'><!ENTITY f '100&#37; x'><!ENTITY lt '&#38;#60;'>]><a>&f;&lt;</a>
  => <!DOCTYPE a [\n<!ENTITY e "x&#x26;lost;">\n<!ENTITY f "100&#x25; x">\n<!ENTITY lt
  "&#x26;#60;">\n]>\n<a>100% x&lt;</a>
<!DOCTYPE a [<!ENTITY e '"><!ENTITY &#37; f "'><!ENTITY % g '<"'><!ENTITY h '&#13;\n'>]><a/>
  => <!DOCTYPE a [\n<!ENTITY e "&#x22;><!ENTITY &#x25; f &#x22;">\n<!ENTITY % g "<&#x22;">\n<!ENTITY h
  "&#xD;\n">\n]>\n<a/>
# Identifiers
<!DOCTYPE a [<!ENTITY e SYSTEM '"' NDATA n><!NOTATION n PUBLIC "'" '"[]>'><!NOTATION m SYSTEM
  ''><!NOTATION l PUBLIC ''><!ENTITY f PUBLIC '' ''><!ENTITY % g SYSTEM '%&amp;'>]><a/>
  => <!DOCTYPE a [\n<!ENTITY e SYSTEM '"' NDATA n>\n<!NOTATION n PUBLIC "'" '"[]>'>\n<!NOTATION m
  SYSTEM "">\n<!NOTATION l PUBLIC "">\n<!ENTITY f PUBLIC "" "">\n<!ENTITY % g SYSTEM
  "%&amp;">\n]>\n<a/>
<!DOCTYPE a PUBLIC "'" 'no"[such>'><a/> => <!DOCTYPE a PUBLIC "'" 'no"[such>' [\n]>\n<a/>
)~";
    const std::string tree =
        "tree() { $QVOX tree $1 | grep -v '^  processingInstruction target=\"xml\"'; }\n";
    for (const qvox_test::Row& row : qvox_test::rows_of(table)) {
        file("f.xml", row[0]);
        const Result converted = qvox("convert --to UTF-8 f.xml");
        EXPECT_EQ(converted.status, 0) << converted.err;
        EXPECT_EQ(converted.out, unescaped(row[1]) + "\n");
        const std::string before = shell(tree + "tree f.xml").out;
        for (const char* const target : {"UTF-8", "UTF-16", "Shift_JIS", "EUC-JP"}) {
            EXPECT_EQ(shell(tree +
                            "rm -f out.xml; cat f.xml | $QVOX convert -o out.xml - "
                            "2>/dev/null --to " +
                            target + "; tree out.xml"),
                      (Result{0, before, ""}))
                << target;
        }
    }
}

// Lines are those of the source.
TEST_F(ConvertTest, RefusesWhatDoesNotFit) {
    expect_runs(R"~(
convert --to UTF-8 => \n<é/> => => f.xml: not converted: 1 character can't be read from UTF-8, nor be
  references where they stand\n\s U+00E9 é in a name: line 2\n
convert --to UTF-8 => <a\n\n>\n<b c='>'\n é=''/></a> => => f.xml: not converted: 1 character can't be
  read from UTF-8, nor be references where they stand\n\s U+00E9 é in a name: line 4\n
convert --to UTF-8 => <!--\n--><a b='\n'>\n<!--\né--></a> => => f.xml: not converted: 1 character
  can't be read from UTF-8, nor be references where they stand\n\s U+00E9 é in a comment: line 4\n
convert --to UTF-8 => <!DOCTYPE a [\r\n<!ENTITY e '<b>'><!--'-->]><a>\r<?p é?></a> => => f.xml: not
  converted: 1 character can't be read from UTF-8, nor be references where they stand\n\s U+00E9 é in
  a processing instruction: line 3\n
convert --to Shift_JIS => \n<!DOCTYPE a [<!ENTITY e SYSTEM 'é'>]><a/> => => f.xml: not converted: 1
  character can't be written in Shift_JIS, nor be references where they stand\n\s U+00E9 é in the
  document type declaration: line 2\n
convert --to Shift_JIS => <!DOCTYPE a [<!ELEMENT é ANY>]><a/> => => f.xml: not converted: 1
  character can't be written in Shift_JIS, nor be references where they stand\n\s U+00E9 é in the
  document type declaration: line 1\n
convert --to UTF-8 => <!DOCTYPE a [<!ENTITY e '<!--&#13;--><b/>'>]>\n<a>&e;\n<bé/>&e;</a> => => f.xml:
  not converted: 3 characters can't be read from UTF-8, nor be references where they stand\n\s U+000D
  \x5Cr in a comment: line 1 (2 times)\n\s U+00E9 é in a name: line 3\n
convert --to EUC-JP => <?xml version='1.0'?><!--¥‾--><a>\n<!--é\xE2\x80\x8Bé-->\n<!--é--></a> => =>
  f.xml: not converted: 6 characters can't be written in EUC-JP, nor be references where they
  stand\n\s U+00A5 ¥ in a comment: line 1\n\s U+00E9 é in a comment: lines 2, 3 (3 times)\n\s U+200B
  \x5Cu{200b} in a comment: line 2\n\s U+203E ‾ in a comment: line 1\n
)~");
    file("f.xml", utf16le(u"\uFEFF<\u00E9/>"));
    EXPECT_EQ(qvox("convert f.xml -o out.xml --to UTF-8").status, 1);
    EXPECT_FALSE(std::filesystem::exists(folder / "out.xml"));
    std::u16string lines = u"<a>";
    for (int i = 0; i < 30; ++i) lines += u"<!--\u00E9-->\n";
    file("f.xml", utf16le(u"\uFEFF" + lines + u"</a>"));
    const std::string report = qvox("convert --to EUC-JP f.xml").err;
    EXPECT_EQ(report.substr(report.find("lines 1")),
              "lines 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, ...\n");
}

// A line for each piece outside the root element. In any target a reference takes the place of what
// it doesn't have; around what a CDATA section can't hold it is split.
TEST_F(ConvertTest, Forms) {
    expect_runs(R"~(
convert --to UTF-8 => <?xml version='1.0'?><!--c\n--><!DOCTYPE a [\n<!ENTITY e 'x>'><!ENTITY % p '\s'>
  ]>\n<?q r?><a><b/> <![CDATA[]]></a>\n\n<!----> => <?xml version="1.0"
  encoding="UTF-8"?>\n<!--c\n-->\n<!DOCTYPE a [\n<!ENTITY e "x>">\n<!ENTITY % p "\s">\n]>\n<?q
  r?>\n<a><b/> <![CDATA[]]></a>\n<!---->\n
convert --to UTF-8 => <!DOCTYPE a [<!ENTITY e '&#xE9;'><!ENTITY % p '&#xE9;'><!ATTLIST a d CDATA
  '&#xE9;'><!ENTITY f SYSTEM 'f'>]><a b='&#xE9;&#xE8;' c=''>&e;&#x7FF;&#x800;&#x20BB7;&#xFFFD;</a>
  => <!DOCTYPE a [\n<!ENTITY e "&#xE9;">\n<!ENTITY % p "&#xE9;">\n<!ATTLIST a d CDATA
  "&#xE9;">\n<!ENTITY f SYSTEM "f">\n]>\n<a b="&#xE9;&#xE8;"
  c="">&#xE9;&#x7FF;\xE0\xA0\x80&#x20BB7;\xEF\xBF\xBD</a>\n
convert --to UTF-8 => <!DOCTYPE a [<!--c--><!ENTITY e ''><?p q?>]><a/> => <!DOCTYPE a [\n<!ENTITY e
  "">\n]>\n<a/>\n => f.xml: warning: comments and processing instructions in the document type are
  left out (2)\n
convert --to EUC-JP => <a b='éあ'>あé&#x20BB7;〜¥</a> => <?xml version="1.0"
  encoding="EUC-JP"?>\r\n<a b="&#xE9;\xA4\xA2">\xA4\xA2&#xE9;&#x20BB7;\xA1\xC1&#xA5;</a>\r\n
convert --to sjis => <a>〜‾</a> => <?xml version="1.0"
  encoding="Shift_JIS"?>\r\n<a>\x81\x60&#x203E;</a>\r\n
convert --to Shift_JIS => <!DOCTYPE a [<!ENTITY e 'é'><!ATTLIST a d CDATA 'é'>]><a>&e;</a> => <?xml
  version="1.0" encoding="Shift_JIS"?>\r\n<!DOCTYPE a [\r\n<!ENTITY e "&#xE9;">\r\n<!ATTLIST a d CDATA
  "&#xE9;">\r\n]>\r\n<a>&#xE9;</a>\r\n
convert --to UTF-8 => <a><![CDATA[é<é]]></a> => <a>&#xE9;<![CDATA[<]]>&#xE9;</a>\n => f.xml: warning:
  CDATA sections are split around characters that become references (1)\n
convert --to UTF-8 => <!DOCTYPE a [<!ENTITY e 'y'>]><a>x&e;z<![CDATA[]]></a> => <!DOCTYPE a
  [\n<!ENTITY e "y">\n]>\n<a>xyz<![CDATA[]]></a>\n
convert --to UTF-8 => <a>\n<b c='1' d='2'\n c='3'/></a> => <a>\n<b c="3" d="2"/></a>\n => f.xml:2:
  warning: attribute c stands twice in a tag, and the first is left out\n
format => <a/> => <a/>\n
format => <?xml version='1.0' encoding='UTF-16'?><a><b><c>表</c><d/></b><!--e--></a> => <?xml
  version="1.0" encoding="UTF-8"?>\n<a>\n\s <b>\n\s \s <c>表</c>\n\s \s <d/>\n\s </b>\n\s
  <!--e-->\n</a>\n
format => <a>x<b/>y<c/><d/></a> => <a>x<b/>y<c/>\n\s <d/>\n</a>\n
format => <a>\n <b/>\n</a> => <a>\n <b/>\n</a>\n
format => <?p?><!DOCTYPE a SYSTEM 's' [<!ELEMENT a ANY><!ENTITY e 'x'>]><a b='&lt;>'/><?q r?> => <?p
  ?>\n<!DOCTYPE a SYSTEM "s" [\n\s <!ELEMENT a ANY>\n\s <!ENTITY e "x">\n]>\n<a b="&lt;&gt;"/>\n<?q
  r?>\n
format => <a><![CDATA[<x>]]><b><![CDATA[]]></b></a> => <a>\n\s <![CDATA[<x>]]>\n\s <b>\n\s \s
  <![CDATA[]]>\n\s </b>\n</a>\n
# Where no reference can stand a character stays what it is.
format => <é><!--é-->é</é> => <é>\n\s <!--é-->&#xE9;</é>\n
)~");
    // The result is stable, also out of a pipe, which can be read only once.
    file("f.xml", "<a>\xE8\xA1\xA8<b/></a>\n");
    EXPECT_EQ(shell("$QVOX convert --to EUC-JP f.xml | $QVOX convert --to UTF-8 -").out,
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>\xE8\xA1\xA8<b/></a>\n");
}

// A result that the parsers refuse, or read as another document, doesn't come into being.
TEST_F(ConvertTest, Lossy) {
    expect_runs(R"~(
convert --lossy --to Shift_JIS => <a b='é'>表é&#x20BB7;<!--é--></a> => <?xml version="1.0"
  encoding="Shift_JIS"?>\r\n<a b="&#xE9;">\x95\x5C&#xE9;&#x20BB7;<!--?--></a>\r\n => f.xml: 1 character
  became ?\n
convert --lossy --to EUC-JP => <!DOCTYPE a [<!ENTITY e SYSTEM 'é'><!ENTITY f 'é'>]><a><?p é¥?></a>
  => <?xml version="1.0" encoding="EUC-JP"?>\r\n<!DOCTYPE a [\r\n<!ENTITY e SYSTEM "?">\r\n<!ENTITY f
  "&#xE9;">\r\n]>\r\n<a><?p ???></a>\r\n => f.xml: 3 characters became ?\n
convert --lossy --to UTF-8 => <a>表</a> => <a>表</a>\n
convert --lossy --to Shift_JIS => <a><?p é>?></a> => => f.xml: 1 character became ?\nf.xml: not
  converted: the result would be read otherwise: processing instruction "p" "?>" as processing
  instruction "p" ""\n
convert --lossy --to Shift_JIS -o out.xml => <é/> => => f.xml: 1 character became ?\nf.xml: not
  converted: the result couldn't be read: the result : parse error (/) at line 2, col 3\n
)~");
    EXPECT_FALSE(std::filesystem::exists(folder / "out.xml"));
    const std::string all = utf16le(u"\uFEFF<a b=\"\u00E9\">\u8868<!--\u00E9--></a>\r\n");
    file("f.xml", all);
    EXPECT_EQ(qvox("convert --lossy f.xml --to UTF-16"), (Result{0, all, ""}));
}

TEST_F(ConvertTest, BadDocumentsAndFailures) {
    file("f.xml", "<a>\n  <b></a>");
    file("g.xml", "<a>x&lost;y</a>");
    file("[a]", "<a/>");
    expect_results(R"(
$QVOX convert --to UTF-8 f.xml => 1 => => f.xml:2:9: end tag (a) not match to start tag (b)\n
$QVOX format f.xml => 1 => => f.xml:2:9: end tag (a) not match to start tag (b)\n
$QVOX convert --to sjs g.xml => 2 => => --to: sjs is none of UTF-8, UTF-16, Shift_JIS, EUC-JP\nRun with
  --help for more information.\n
$QVOX convert --to UTF8 - <'[a]' -o - => 0 => <a/>\n
$QVOX convert --to UTF-8 missing.xml => 1 => => missing.xml: file (missing.xml) cannot open\n
# What stands for nothing is missing in the result.
$QVOX convert --to UTF-8 g.xml => 0 => <a>xy</a>\n => g.xml:1:5: warning: entity name (lost) not found\n
$QVOX convert --to UTF-16 '[a]' -o '[b]' => 0
$QVOX convert --to UTF-8 '[b]' --output='[b]' => 0
$QVOX convert --to UTF-8 '[a]' -o no/such => 2 => => no/such: No such file or directory\n
$QVOX convert --to UTF-8 '[a]' -o /dev/full => 2 => => /dev/full: No space left on device\n
$QVOX convert --to UTF-8 '[a]' >/dev/full => 2 => => qvox: cannot write to standard output: No space left
  on device\n
$QVOX format '[a]' >/dev/full => 2 => => qvox: cannot write to standard output: No space left on device\n
)");
    EXPECT_EQ(contents_of("[b]"), "<a/>\n");
    for (const char* const arguments :
         {"convert '[a]'", "convert --to ISO-2022-JP '[a]'", "convert --to UTF-8",
          "convert --to UTF-8 '[a]' '[b]'", "format", "format --to UTF-8 '[a]'"}) {
        EXPECT_EQ(qvox(arguments).status, 2) << arguments;
    }
    if (!qvox_test::os::HAS_PIPES) return;
    // A pipe fares as a file does, and its copy doesn't stay.
    EXPECT_EQ(shell("mkdir t; { cat g.xml; echo '<'; } | TMPDIR=t $QVOX convert --to UTF-8 "
                    "/dev/stdin 2>&1 >/dev/null; ls t")
                  .out,
              "/dev/stdin:1:5: warning: entity name (lost) not found\n"
              "/dev/stdin:2:17: /dev/stdin : parse error (<\\n) at line 2, col 17\n");
    const Result uncopied = shell("cat g.xml | TMPDIR=no $QVOX convert --to UTF-8 /dev/stdin");
    EXPECT_EQ(uncopied.status, 1);
    EXPECT_EQ(uncopied.err.find("/dev/stdin: no copy of it can be made: "), 0U) << uncopied.err;
}

// A result comes into being as a whole or not at all, whatever becomes of the program.
TEST_F(ConvertTest, NeverLosesAFile) {
    if (!qvox_test::os::HAS_PIPES) GTEST_SKIP() << "no links, permissions and signals";
    const std::string document = "<a>" + std::string(400000, 'x') + "</a>\n";
    file("f.xml", document);
    file("g.xml", "<a>]]></a>");
    file("bad.xml", "<a>");
    std::filesystem::create_directory(folder / "t");
    std::filesystem::create_symlink("real.xml", folder / "link");
    const std::string convert = "$QVOX convert --to UTF-8 ";
    const std::pair<std::string, const char*> cases[] = {
        // A full disk, which here is a limit: of 200 blocks of 512 bytes.
        {"(ulimit -f 200; trap '' XFSZ; " + convert + "f.xml -o f.xml 2>&1); echo $?",
         "f.xml: File too large\n2\n"},
        {"exec 2>/dev/null; (ulimit -f 200; " + convert +
             "f.xml -o f.xml); test $? -gt 128 && echo hit",
         "hit\n"},
        {convert + "g.xml -o bad.xml 2>/dev/null; cat bad.xml", "<a>"},
        {"chmod 640 f.xml; " + convert + "f.xml -o f.xml; stat -c %a f.xml", "640\n"},
        {"umask 27; " + convert + "f.xml -o new.xml; stat -c %a new.xml; rm new.xml", "640\n"},
        {convert + "f.xml -o link; readlink link; cmp f.xml real.xml; echo '<b/>' >b.xml; " +
             convert + "b.xml -o link; cat real.xml; rm real.xml b.xml",
         "real.xml\n<b/>\n"},
        {"mkfifo p; " + convert + "f.xml -o p & timeout 60 cmp f.xml p; wait; test -p p && rm p",
         ""},
        {"ln -s loop loop; " + convert + "f.xml -o loop 2>&1; rm loop",
         "loop: Too many levels of symbolic links\n"},
        // A signal, while the program waits for its input.
        {"exec 2>/dev/null; mkfifo q; " + convert +
             "q -o f.xml & exec 3>q; echo '<a>' >&3; for i in $(seq 200); do "
             "[ -z \"$(ls -A t)\" ] || break; sleep 0.05; done; kill $!; wait $!; echo $?; rm q",
         "143\n"},
    };
    for (const auto& [script, out] : cases) {
        EXPECT_EQ(shell("export TMPDIR=$PWD/t; " + script), (Result{0, out, ""})) << script;
        EXPECT_EQ(contents_of("f.xml"), document) << script;
        EXPECT_EQ(shell("ls -A | tr '\\n' ' '; ls -A t").out,
                  ".err .out .script bad.xml f.xml g.xml link t ")
            << script;
    }
}

// What the library doesn't read as it stands is decoded ahead of it.
TEST_F(ConvertTest, AllOfUtf8) {
    file("f.xml",
         "\xEF\xBB\xBF<?xml version='1.0' encoding='utf-8'?>\n<!DOCTYPE é [<!ENTITY e \"😀é\">]>\n"
         "<é b='ü😀'><!--é😀--><?p 😀?>&e;&#xfdd0;&#xFDD1;😀<![CDATA[😀x]]></é>");
    EXPECT_EQ(
        qvox("tree f.xml | grep -e data= -e value= -e text="),
        (Result{0, R"(  processingInstruction target="xml" data="version=\"1.0\" encoding=\"utf-8\""
    declarations text="<!ENTITY e \"😀é\">"
    attribute name="b" namespaceURI=null localName=null value="ü😀"
    comment data="é😀"
    processingInstruction target="p" data="😀"
    text data="😀é\u{fdd0}\u{fdd1}😀"
    cdataSection data="😀x"
)",
                ""}));
    EXPECT_EQ(qvox("format f.xml").out,
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE é [\n"
              "  <!ENTITY e \"&#x1F600;&#xE9;\">\n]>\n<é b=\"&#xFC;&#x1F600;\">\n  <!--é😀-->\n"
              "  <?p 😀?>&#x1F600;&#xE9;\xEF\xB7\x90\xEF\xB7\x91&#x1F600;<![CDATA[😀x]]>\n</é>\n");
    EXPECT_EQ(qvox("check f.xml").status, 1);
    file("g.xml", "<a>é\n\xFF</a>");
    EXPECT_EQ(qvox("convert --to utf8 g.xml"), (Result{1, "", "g.xml:2:5: not xml char (ffff)\n"}));
}

}  // namespace
