// `qvox check`, and what the program does with its options and its output.
#include <string>

#include <qvox/version.h>

#include "run_program.h"

namespace {

class CheckTest : public ProgramTest {};

TEST_F(CheckTest, SaysWhereAndWhat) {
    const struct {
        const char* bytes;
        const char* report;  // behind the name of the file
    } cases[] = {
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
    const struct {
        const char* name;
        const char* shown;
    } cases[] = {
        {"注文書.xml", "注文書.xml"},
        {"読めない ファイル", "読めない ファイル"},
        {"\x92\x8D\x95\xB6.xml", "\\x92\\x8d\\x95\\xb6.xml"},
        {"a\nb\\c\"d", "a\\nb\\c\"d"},
        {"[a,b]", "[a,b]"},
        {"[[a]]", "[[a]]"},
        {"{}", "{}"},
        {"check", "check"},
        {"--verbose", "--verbose"},
    };
    for (const auto& [name, shown] : cases) {
        file(name, "x<a/>");
        const std::string at(shown);
        EXPECT_EQ(qvox("check -- '" + std::string(name) + '\''),
                  (Result{1, at + ":1:2: " + at + " : parse error (x) at line 1, col 2\n", ""}));
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
    for (const char* const arguments :
         {"", "check", "events", "branch x.xml", "--verbose", "check --no-namespaces x.xml",
          "events --unknown x.xml", "check x.xml --verbos"}) {
        const Result result = qvox(arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_EQ(result.out, "") << arguments;
        EXPECT_NE(result.err, "") << arguments;
    }
    for (const char* const arguments : {"--help", "check --help", "events -h"}) {
        const Result result = qvox(arguments);
        EXPECT_EQ(result.status, 0) << arguments;
        EXPECT_EQ(result.err, "") << arguments;
    }
    EXPECT_NE(qvox("events --help").out.find("--namespace-prefixes"), std::string::npos);
    EXPECT_EQ(qvox("--version"), (Result{0, "qvox " QVOX_VERSION "\n", ""}));
}

// Output that can't be written is never taken for success, and a reader that has left is no reason
// for a message.
TEST_F(CheckTest, NoticesThatItsOutputIsLost) {
    const char* const lost = "qvox: cannot write to standard output: ";
    for (const char* const command :
         {"check -v $DATA/order-utf8.xml", "events $DATA/order-utf8.xml", "--help", "--version"}) {
        const Result full = shell("$QVOX " + std::string(command) + " >/dev/full");
        EXPECT_EQ(full.status, 2) << command;
        EXPECT_EQ(full.err, lost + std::string("No space left on device\n")) << command;
        const Result closed = shell("$QVOX " + std::string(command) + " >&-");
        EXPECT_EQ(closed.status, 2) << command;
        EXPECT_EQ(closed.err, lost + std::string("Bad file descriptor\n")) << command;
    }
    file("big.xml", "<a>" + std::string(1000000, '\n') + "</a>");
    EXPECT_EQ(shell("$QVOX events big.xml | head -c 13"), (Result{0, "startDocument", ""}));
    EXPECT_EQ(shell("trap '' PIPE; { $QVOX events big.xml; echo $? >&2; } | true"),
              (Result{0, "", "2\n"}));
}

// With the debug log or the statistics switched on, the library's lines go to standard error.
TEST_F(CheckTest, LibraryLinesStayOffStandardOutput) {
    file("bad.xml", "<a></b>");
    const std::string line = "bad.xml:1:8: end tag (b) not match to start tag (a)\n";
    EXPECT_EQ(qvox("check bad.xml"), (Result{1, line, ""}));
    const Result debugged = shell("QVOX_DEBUG=1 $QVOX check bad.xml");
    EXPECT_EQ(debugged.out, line);
    EXPECT_NE(debugged.err.find("QVOX error : end tag (b) not match"), std::string::npos);
}

}  // namespace
