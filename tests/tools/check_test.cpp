// `qvox check`, and what the program does with its options and its output.
#include <sstream>
#include <string>

#include <qvox/version.h>

#include "run_program.h"

namespace {

class CheckTest : public ProgramTest {};

TEST_F(CheckTest, SaysWhereAndWhat) {
    const char* const table = R"~(
<a/> =>
<a>&undeclared;</a> =>
=> :1:1: not XML file\nhint: this is no XML document, which begins with <
hello => :1:2: f.xml : parse error (h) at line 1, col 2\nhint: this is no XML document, which begins
  with <
<a>\n\s <b></a> => :2:9: end tag (a) not match to start tag (b)
<a>é</a> => :1:4: not supported UTF-8 char (c3)\nhint: a character of two bytes in UTF-8 is read as a
  reference only, such as &#xE9;; `qvox convert --to UTF-8` writes these
<a>😀</a> => :1:4: not supported UTF-8 char (f0)\nhint: a character of four bytes in UTF-8 is read as
  a reference only, such as &#x20BB7;; `qvox convert --to UTF-8` writes these
\xEF\xBB\xBF<a/> => :1:3: f.xml : parse error (?) at line 1, col 3\nhint: the file begins with a byte
  order mark, which UTF-8 mustn't have here; `qvox convert --to UTF-8` writes it without
<a>\x82\xA0</a> => :1:4: not supported UTF-8 char (82)\nhint: this is no UTF-8; a document in
  Shift_JIS, EUC-JP or ISO-2022-JP has to declare that
<a><!-- x => :1:9: unterminated comment : f.xml ( x) at line 1, col 10
<a><!-- x\n\n\t-- --></a> => :3:9: '--' found in comment : f.xml ( x\x5Cn\x5Cn\x5Ct-- ) at line 3, col
  4
<a>書&#x0;</a> => :1:6: illegal character reference value : f.xml (&#x0) at line 1, col 11
<a>AT&T</a> => :1:5: illegal reference : f.xml (&T) at line 1, col 9\nhint: an & that begins no
  reference is written as &amp;
<?xml version='1.0' encoding='Shift_JIS'?><\x8F\x91></\x8E\x9A> => :1:52: end tag (字) not match to
  start tag (書)
<?xml version='1.0' encoding='EUC-JP'?>\n<a>\x8F\xB0\xA1</a> => :2:3: not xml char (0)\nhint: the
  characters of JIS X 0212, of three bytes in EUC-JP, are read as references only
<?xml version='1.0' encoding='ISO-2022-JP'?>\n<a>\x1B$B$"\x1B(B</a> => :2:5: illegal third KOUT code
  (42)\nhint: kanji in ISO-2022-JP are ended by ESC ( J here, and ESC ( B is refused
<?xml version='1.0' encoding='latin1'?><a/> => :1:31: not supported encoding : f.xml (latin1) at line
  1, col 38\nhint: the encodings that are known are UTF-8, UTF-16, Shift_JIS, EUC-JP and ISO-2022-JP
)~";
    for (qvox_test::Row row : qvox_test::rows_of(table)) {
        row.resize(2);
        file("f.xml", unescaped(row[0]));
        const std::string line = row[1].empty() ? "" : "f.xml" + unescaped(row[1]) + '\n';
        EXPECT_EQ(qvox("check f.xml"), (Result{row[1].empty() ? 0 : 1, line, ""})) << row[0];
    }
}

// With their lines where the parser tells none.
TEST_F(CheckTest, Warnings) {
    const char* const table = R"(
<a xml:lang='ja' xmlns:p='u'><p:b p:c=''/></a> =>
<a>&e;</a> => f.xml:1:5: warning: entity name (e) not found\n
<!DOCTYPE a [<!ENTITY e SYSTEM 'no'>]><a>&e;</a> => f.xml:1:43: warning: system id (no) can't open\n
<?xml version='1.0'?><!--\n--><a>\n<b c='' d='' c=''\n c=''/>&e;</a>
  => f.xml:3: warning: attribute c stands twice in a tag\nf.xml:3: warning: attribute c stands twice
  in a tag\nf.xml:4:8: warning: entity name (e) not found\n
<!DOCTYPE p:a [<!-- -->\n<!ENTITY e '<x/><!---->'>]>\n<p:a>&e;<p:b>\n<b q:c=''/></p:b></p:a>
  => f.xml:3: warning: prefix p is not declared\nf.xml:4: warning: prefix q is not declared\n
)";
    for (qvox_test::Row row : qvox_test::rows_of(table)) {
        row.resize(2);
        const std::string warnings = unescaped(row[1]);
        file("f.xml", row[0]);
        EXPECT_EQ(qvox("check f.xml"), (Result{0, "", ""}));
        EXPECT_EQ(qvox("check --warnings f.xml"), (Result{0, warnings, ""}));
        EXPECT_EQ(qvox("check --strict f.xml"), (Result{warnings.empty() ? 0 : 1, warnings, ""}));
    }
    EXPECT_EQ(
        shell("printf '<a>]]>' | $QVOX check -").out,
        "standard input:1:5: unexpected token found : standard input (]]>) at line 1, col 7\n");
}

// The line of the document, in the cells of the terminal.
TEST_F(CheckTest, ShowsTheLineOnATerminal) {
    if (shell("script --version >/dev/null").status != 0) GTEST_SKIP() << "no script(1)";
    if (!qvox_test::os::HAS_TERMINALS) GTEST_SKIP() << "a console is none";
    const struct {
        std::string document;
        std::string shown;
    } cases[] = {
        {"<a>\n\t<項目>]]></項目></a>", " <項目>]]></項目></a>\n       ^\n"},
        {"<?xml version='1.0' encoding='Shift_JIS'?>\r\n<a>\x83\x5C\xB1\x9F\x40]]></a>",
         "<a>ソｱ檗]]></a>\n   ^\n"},
        {"<?xml version='1.0' encoding='EUC-JP'?>\n<a>\xA5\xBD\x8E\xB1]]></a>",
         "<a>ソｱ]]></a>\n   ^\n"},
        {"<a>" + std::string(90, 'x') + "<b></a>" + std::string(90, 'y'),
         "..." + std::string(43, 'x') + "<b></a>" + std::string(25, 'y') + "...\n" +
             std::string(53, ' ') + "^\n"},
    };
    for (const auto& [document, shown] : cases) {
        file("f.xml", document);
        const std::string run = "script -qec \"$QVOX check f.xml\" /dev/null | tr -d '\\r'";
        const std::string out = shell("export NO_COLOR=1 TERM=xterm; " + run).out;
        EXPECT_NE(out.find('\n' + shown), std::string::npos) << out;
        EXPECT_EQ(out.find('\x1B'), std::string::npos) << out;
        EXPECT_NE(shell("unset NO_COLOR; export TERM=xterm; " + run).out.find("\x1B["),
                  std::string::npos);
    }
}

// Files are checked side by side, and told of in their order.
TEST_F(CheckTest, SideBySide) {
    file("good.xml", "<a/>");
    file("bad.xml", "<!DOCTYPE a [<!ENTITY e SYSTEM 'part.xml'>]><a>&e;</a>");
    file("part.xml", "part ]]>");  // fails while two files are open
    const std::string files = "$(for i in $(seq 300); do echo good.xml bad.xml no.xml; done)";
    const std::string few = qvox_test::os::HAS_PIPES ? "ulimit -n 20; " : "";  // Wine takes more
    const Result one = shell(few + "$QVOX check -v -w " + files);
    EXPECT_NE(one.out.find("bad.xml:1:49: unexpected token found"), std::string::npos);
    EXPECT_EQ(one.status, 1);
    for (const std::string jobs : {"-j 2", "-j 0", "--jobs=9"}) {
        EXPECT_EQ(shell("$QVOX check -v -w " + jobs + ' ' + files), one);
    }
    EXPECT_EQ(shell("$QVOX check -j 4 -v " + files + " >/dev/full").status, 2);
}

TEST_F(CheckTest, GoesOnAfterABadFile) {
    file("good.xml", "<a/>");
    file("bad.xml", "<ab>");
    expect_results(R"(
$QVOX check good.xml bad.xml missing.xml . good.xml => 1 => bad.xml:1:5: bad.xml : parse error () at
  line 1, col 5\nmissing.xml: file (missing.xml) cannot open\n.: file (.) cannot open\n
$QVOX check -v good.xml bad.xml good.xml => 1 => good.xml: ok (UTF-8, root a, 1
  element)\nbad.xml:1:5: bad.xml : parse error () at line 1, col 5\ngood.xml: ok (UTF-8, root a, 1
  element)\n
cd $DATA; $QVOX check -v order-sjis.xml order-utf16le.xml => 0 => order-sjis.xml: ok (Shift_JIS, root
  注文書, 54 elements)\norder-utf16le.xml: ok (UTF-16, root 注文書, 54 elements)\n
)");
}

// A name goes to the system as it was given and is printed so that the reader knows it again,
// also where the library repeats it.
TEST_F(CheckTest, PrintsTheTrueNameOfAFile) {
    const char* const cases[][2] = {
        {"注文書.xml", "注文書.xml"},
        {"読めない ファイル", "読めない ファイル"},
        {"é\"𠮷[[a,b]]{}\x7F\xE2\x80\xAE", "é\"𠮷[[a,b]]{}\\u{7f}\\u{202e}"},
        {"\x92\x8D\x95\xB6.xml", "\\x92\\x8d\\x95\\xb6.xml"},     // Shift_JIS
        {"\xE6\xB3", "\\xe6\\xb3"},                               // cut off
        {"\xE6\xB3z", "\\xe6\\xb3z"},                             // broken off
        {"\xC0\xAF \xE0\x80\xAF", "\\xc0\\xaf \\xe0\\x80\\xaf"},  // longer than need be
        {"\xED\xA0\x80 \xF4\x90\x80\x80", "\\xed\\xa0\\x80 \\xf4\\x90\\x80\\x80"},  // no characters
        {"a\nb\\c\"d", "a\\nb\\c\"d"},
        {"--verbose", "--verbose"},
    };
    for (const auto& [name, shown] : cases) {
        const std::string at(shown);
        if (qvox_test::os::HAS_WIDE_NAMES && at != name) continue;  // no name there
        file(name, "<a>]]></a>");
        EXPECT_EQ(
            qvox("check -- '" + std::string(name) + '\''),
            (Result{1, at + ":1:5: unexpected token found : " + at + " (]]>) at line 1, col 7\n",
                    ""}));
        std::filesystem::remove(folder / std::filesystem::u8path(name));
        EXPECT_EQ(qvox("check -- '" + std::string(name) + '\''),
                  (Result{1, at + ": file (" + at + ") cannot open\n", ""}));
    }
}

TEST_F(CheckTest, WrongUseAndHelp) {
    for (const std::string arguments :
         {"", "check", "events", "branch x.xml", "--verbose", "check --no-namespaces x.xml",
          "events --unknown x.xml", "check x.xml --verbos", "tree", "tree x.xml x.xml",
          "tree --namespace-prefixes x.xml"}) {
        EXPECT_EQ(shell("$QVOX " + arguments + " 2>.e; echo $?; test -s .e"),
                  (Result{0, "2\n", ""}))
            << arguments;
    }
    EXPECT_EQ(qvox("--help").status, 0);
    EXPECT_EQ(shell("$QVOX events -h | grep -o -e --namespace-pref"),
              (Result{0, "--namespace-pref\n", ""}));
    EXPECT_EQ(qvox("--version"), (Result{0, "qvox " QVOX_VERSION "\n", ""}));
}

// Output that can't be written is never taken for success, and a reader that has left is no reason
// for a message.
TEST_F(CheckTest, NoticesThatItsOutputIsLost) {
    file("big.xml", "<a>" + std::string(1000000, '\n') + "</a>");
    expect_results(R"(
$QVOX check -v $DATA/order-utf8.xml >/dev/full => 2 => => qvox: cannot write to standard output: No
  space left on device\n
$QVOX events $DATA/order-utf8.xml >&- => 2 => => qvox: cannot write to standard output: Bad file
  descriptor\n
$QVOX --help >/dev/full => 2 => => qvox: cannot write to standard output: No space left on device\n
$QVOX --version >&- => 2 => => qvox: cannot write to standard output: Bad file descriptor\n
$QVOX events big.xml | head -c 13 => 0 => startDocument
trap '' PIPE; { $QVOX events big.xml; echo $? >&2; } | true => 0 => => 2\n
)");
}

// Of the README's section on the program, as they stand.
TEST_F(CheckTest, ReadmeExamplesRun) {
    const bool isEmulated = std::string(QVOX_PROGRAM).find(' ') != std::string::npos;
    if (isEmulated) GTEST_SKIP() << "another program runs it";
    std::istringstream readme(qvox_test::read_file(QVOX_EXAMPLE_DATA "/../../README.md"));
    const std::string prompt = "    $ ";
    const std::string go = "PATH=$(dirname $QVOX):$PATH; cp $DATA/* .; ";
    int examples = 0;
    for (std::string line; std::getline(readme, line);) {
        if (line.compare(0, prompt.size(), prompt) != 0) continue;
        const std::string command = line.substr(prompt.size());
        std::string shown;
        while (std::getline(readme, line) && line.compare(0, 4, "    ") == 0) {
            shown += line.substr(4) + '\n';
        }
        EXPECT_EQ(shell(go + command + " 2>&1; true"), (Result{0, shown, ""})) << command;
        ++examples;
    }
    EXPECT_GE(examples, 3);
}

// The man page and the completion are made of the help, and hold all of it.
TEST_F(CheckTest, ManualAndCompletion) {
    const std::string page = shell("$QVOX --print-manual-page | sed 's/\\\\-/-/g'").out;
    const std::string completion = qvox("--print-bash-completion").out;
    for (const std::string command : {"check", "convert", "events", "format", "tree"}) {
        std::istringstream help(qvox(command + " --help").out);
        bool isExample = false;
        for (std::string line; std::getline(help, line);) {
            if (isExample) {
                EXPECT_NE(page.find(line + '\n'), std::string::npos) << line;
            }
            isExample = isExample || line == "Examples:";
            const std::size_t option = line.find("--");
            if (isExample || option == std::string::npos) continue;
            const std::string name = line.substr(option, line.find(' ', option) - option);
            EXPECT_NE(page.find(name), std::string::npos) << name;
            EXPECT_NE(completion.find(name), std::string::npos) << name;
        }
        EXPECT_TRUE(isExample) << command;
    }
    const std::string complete =
        ". ./c; COMP_CWORD=1; COMP_WORDS=(qvox con); _qvox; echo $COMPREPLY";
    EXPECT_EQ(shell("$QVOX --print-bash-completion >c; bash -c '" + complete + "'").out,
              "convert\n");
}

TEST_F(CheckTest, NoExternal) {
    file("f.xml", "<!DOCTYPE a SYSTEM 's' [<!ENTITY e SYSTEM 'e'>]><a>&e;</a>");
    file("s", "]]>");
    file("e", "]]>");
    for (const std::string command :
         {"check -w", "events", "tree", "format", "convert --to utf8"}) {
        EXPECT_EQ(qvox(command + " --no-external f.xml").status, 0) << command;
        EXPECT_EQ(qvox(command + " f.xml").status, 1) << command;
    }
}

// The README shows the example programs as they are compiled.
TEST(Readme, ShowsTheExamplesVerbatim) {
    const std::string project = QVOX_EXAMPLE_DATA "/../../";
    const std::string readme = qvox_test::read_file(project + "README.md");
    for (const char* const name : {"examples/events.cpp", "examples/tree.cpp"}) {
        const std::string example = qvox_test::read_file(project + name);
        EXPECT_NE(readme.find("```cpp\n" + example + "```\n"), std::string::npos) << name;
    }
}

}  // namespace
