// `qvox check`, and what the program does with its options and its output.
#include <string>

#include <qvox/version.h>

#include "run_program.h"

namespace {

class CheckTest : public ProgramTest {};

TEST_F(CheckTest, SaysWhereAndWhat) {
    const char* const cases[][2] = {
        // and the report behind the name of the file
        {"<a/>", nullptr},
        {"<a>&undeclared;</a>", nullptr},  // a warning only
        {"", ":1:1: not XML file"},
        {"hello", ":1:2: f.xml : parse error (h) at line 1, col 2"},
        {"<a>\n  <b></a>", ":2:9: end tag (a) not match to start tag (b)"},
        {"<a>\xC3\xA9</a>", ":1:4: not supported UTF-8 char (c3)"},
        {"<a><!-- x", ":1:9: unterminated comment : f.xml ( x) at line 1, col 10"},
        {"<a><!-- x\n\n\t-- --></a>",
         ":3:9: '--' found in comment : f.xml ( x\\n\\n\\t-- ) at line 3, col 4"},
        {"<a>\xE6\x9B\xB8&#x0;</a>",
         ":1:6: illegal character reference value : f.xml (&#x0) at line 1, col 11"},
        {"<?xml version='1.0' encoding='Shift_JIS'?><\x8F\x91></\x8E\x9A>",
         ":1:52: end tag (字) not match to start tag (書)"},
        {"<?xml version='1.0' encoding='latin1'?><a/>",
         ":1:31: not supported encoding : f.xml (latin1) at line 1, col 38"},
    };
    for (const auto& [bytes, report] : cases) {
        file("f.xml", bytes);
        const std::string line = report == nullptr ? "" : std::string("f.xml") + report + '\n';
        EXPECT_EQ(qvox("check f.xml"), (Result{report == nullptr ? 0 : 1, line, ""})) << bytes;
    }
}

TEST_F(CheckTest, GoesOnAfterABadFile) {
    file("good.xml", "<a/>");
    file("bad.xml", "<ab>");
    const std::string bad = "bad.xml:1:5: bad.xml : parse error () at line 1, col 5\n";
    EXPECT_EQ(
        qvox("check good.xml bad.xml missing.xml . good.xml"),
        (Result{1, bad + "missing.xml: file (missing.xml) cannot open\n.: file (.) cannot open\n",
                ""}));
    EXPECT_EQ(qvox("check -v good.xml bad.xml good.xml"),
              (Result{1, "good.xml: ok\n" + bad + "good.xml: ok\n", ""}));
    EXPECT_EQ(qvox("check --verbose $DATA/order-*.xml | sed 's:.*/::'").out,
              "order-eucjp.xml: ok\norder-iso2022jp.xml: ok\norder-sjis.xml: ok\n"
              "order-utf16be-bom.xml: ok\norder-utf16be.xml: ok\norder-utf16le-bom.xml: ok\n"
              "order-utf16le.xml: ok\norder-utf8.xml: ok\n");
}

// Each bad one fails while two files are open.
TEST_F(CheckTest, TakesThousandsOfFiles) {
    file("good.xml", "<good/>");
    file("bad.xml", "<!DOCTYPE a [<!ENTITY e SYSTEM 'part.xml'>]><a>&e;</a>");
    file("part.xml", "part ]]>");
    const Result result = shell(
        "i=0; while [ $i -lt 2000 ]; do set -- \"$@\" good.xml bad.xml; i=$((i + 1)); done\n"
        "ulimit -n 20; $QVOX check \"$@\" | sort | uniq -c | sed 's/ at line.*//; s/^ *//'");
    EXPECT_EQ(result,
              (Result{0, "2000 bad.xml:1:49: unexpected token found : bad.xml (]]>)\n", ""}));
}

// A name goes to the system as it was given and is printed so that the reader knows it again,
// also where the library repeats it.
TEST_F(CheckTest, PrintsTheTrueNameOfAFile) {
    const char* const cases[][2] = {
        {"注文書.xml", "注文書.xml"},
        {"読めない ファイル", "読めない ファイル"},
        {"\x92\x8D\x95\xB6.xml", "\\x92\\x8d\\x95\\xb6.xml"},
        {"a\nb\\c\"d", "a\\nb\\c\"d"},
        {"[[a,b]]", "[[a,b]]"},
        {"{}", "{}"},
        {"--verbose", "--verbose"},
    };
    for (const auto& [name, shown] : cases) {
        const std::string at(shown);
        file(name, "<a>]]></a>");
        EXPECT_EQ(
            qvox("check -- '" + std::string(name) + '\''),
            (Result{1, at + ":1:5: unexpected token found : " + at + " (]]>) at line 1, col 7\n",
                    ""}));
        std::filesystem::remove(folder / name);
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
    for (const char* const arguments : {"--help", "check --help", "events -h"}) {
        const Result result = qvox(arguments);
        EXPECT_EQ(std::to_string(result.status) + result.err, "0") << arguments;
    }
    EXPECT_NE(qvox("events --help").out.find("--namespace-prefixes"), std::string::npos);
    EXPECT_EQ(qvox("--version"), (Result{0, "qvox " QVOX_VERSION "\n", ""}));
}

// Output that can't be written is never taken for success, and a reader that has left is no reason
// for a message.
TEST_F(CheckTest, NoticesThatItsOutputIsLost) {
    const std::string lost = "qvox: cannot write to standard output: ";
    for (const std::string command :
         {"check -v $DATA/order-utf8.xml", "events $DATA/order-utf8.xml", "--help", "--version"}) {
        EXPECT_EQ(qvox(command + " >/dev/full"),
                  (Result{2, "", lost + "No space left on device\n"}))
            << command;
        EXPECT_EQ(qvox(command + " >&-"), (Result{2, "", lost + "Bad file descriptor\n"}))
            << command;
    }
    file("big.xml", "<a>" + std::string(1000000, '\n') + "</a>");
    EXPECT_EQ(shell("$QVOX events big.xml | head -c 13"), (Result{0, "startDocument", ""}));
    EXPECT_EQ(shell("trap '' PIPE; { $QVOX events big.xml; echo $? >&2; } | true"),
              (Result{0, "", "2\n"}));
}

// With the debug log switched on, the library's lines go to standard error.
TEST_F(CheckTest, LibraryLinesStayOffStandardOutput) {
    file("bad.xml", "<a></b>");
    const Result debugged = shell("QVOX_DEBUG=1 $QVOX check bad.xml");
    EXPECT_EQ(debugged.out, "bad.xml:1:8: end tag (b) not match to start tag (a)\n");
    EXPECT_NE(debugged.err.find("QVOX error : end tag (b) not match"), std::string::npos);
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
