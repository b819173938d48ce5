// Every refusal of a document without a document type declaration: code, message and place.
#include <gtest/gtest.h>

#include "support/encode.h"
#include "support/recorder.h"

namespace qvox_test {
namespace {

// A message as it goes to standard output, where a line feed is CR LF. For ASCII.
std::string output_line(const std::string& message) {
    std::string line = "QVOX error : ";
    for (const char c : message) line += c == '\n' ? std::string("\r\n") : std::string(1, c);
    return line + '\n';
}

std::string at(int line, int column) {
    return " at line " + std::to_string(line) + ", col " + std::to_string(column);
}

void expect_refused(const std::string& document, int code, const std::string& message, int line,
                    int column) {
    const Outcome outcome = parse_bytes(document);
    EXPECT_EQ(outcome.code, code) << document;
    EXPECT_EQ(outcome.message, message) << document;
    EXPECT_EQ(outcome.type, "-") << document;
    EXPECT_EQ(outcome.output, output_line(message)) << document;
    const std::string report = "error " + std::to_string(code) + ' ' + std::to_string(line) + ':' +
                               std::to_string(column) + ' ' + quoted(message.c_str()) + '\n';
    const std::size_t found = outcome.events.find("error ");
    EXPECT_EQ(outcome.events.substr(std::min(found, outcome.events.size())), report) << document;
}

// Message and ErrorHandler have the line of the scanner, which holds the character behind the
// token, and the column of the token. The first character of line 1 has column 2, that of each
// later line column 1.
TEST(Errors, Syntax) {
    const struct {
        const char* document;
        const char* token;
        int line;
        int column;
    } cases[] = {
        {"    ", "", 1, 5},
        {"<!--x-->", "", 1, 9},
        {"text", "t", 1, 2},
        {"</a>", "</", 1, 2},
        {"<1a/>", "<1", 1, 2},
        {"< a/>", "< ", 1, 2},
        {"<!-x-->", "<!-x", 1, 2},
        {"<!> <a/>", "<!>", 1, 2},
        {"<!DOCTYP a><a/>", "<!DOCTYP", 1, 2},
        {"<![CDATA[]]><a/>", "<![CDATA[", 1, 2},
        {"&lt;<a/>", "", 1, 2},
        {"<a><", "<", 1, 5},
        {"<a><!--", "", 1, 8},
        {"<a></", "", 1, 6},
        {"<a><?t", "", 1, 7},
        {"<abc>", "", 1, 6},
        {"<a b=\"1\"", "", 1, 9},
        {"<a b></a>", ">", 1, 6},
        {"<a b=1/>", "1", 1, 7},
        {"<a =\"1\"/>", "=", 1, 5},
        {"<a b=\"1\"c=\"2\"/>", "c", 1, 10},
        {"<a b='1' &lt;/>", "", 1, 11},
        {"<a></ a>", " ", 1, 7},
        {"<a><?1?></a>", "1", 1, 7},
        {"<a><?t+?></a>", "+", 1, 8},
        {"<a>\n</a>\nx", "x", 3, 1},
        {"<a>\r</a>\r\n\rx", "x", 4, 1},
        {"<a b=\"1\"c\n=\"2\"/>", "c", 2, 10},
        {"<a></\n\na>", "\n\n", 3, 0},
        {" <?xml version='1.0'?><a/>", "<?xml", 1, 3},
        {"<!----><?xml version='1.0'?><a/>", "<?xml", 1, 9},
        {"<?xml encoding='UTF-8'?><a/>", "encoding", 1, 8},
        {"<?xml versio='1.0'?><a/>", "versio", 1, 8},
        {"<?xml version=1.0?><a/>", "1", 1, 16},
        {"<?xml '1.0'?><a/>", "'", 1, 8},
        {"<?xml version='1.0' standalone='yes' encoding='UTF-8'?><a/>", "encoding", 1, 39},
        {"<a><?xml version='1.0' standalone='yes'?></a>", "standalone", 1, 25},
    };
    for (const auto& test : cases) {
        const std::string token = std::string(" (") + test.token + ')';
        expect_refused(test.document, 6,
                       "doc.xml : parse error" + token + at(test.line, test.column), test.line,
                       test.column);
    }
}

// The message has the column of the scanner, the ErrorHandler that of the token.
TEST(Errors, Lexical) {
    const struct {
        const char* document;
        int code;
        const char* problem;
        const char* token;
        int line;
        int column;
        int tokenColumn;
    } cases[] = {
        {"<a>text", 12, "unterminated char data", "text", 1, 8, 5},
        {"<a>text\n", 12, "unterminated char data", "text\n", 2, 0, 5},
        {"<a>x&amp;", 12, "unterminated char data", "x&", 1, 10, 5},
        {"<a>x]]>y</a>", 6, "unexpected token found", "]]>", 1, 8, 5},
        {"<a>]]&gt;</a>", 6, "unexpected token found", "]]>", 1, 10, 5},
        {"<a><!--x", 12, "unterminated comment", "x", 1, 9, 9},
        {"<!-- a -- b --><a/>", 6, "'--' found in comment", " a -- ", 1, 11, 6},
        {"<!-----><a/>", 6, "'--' found in comment", "---", 1, 8, 6},
        {"<!--a---><a/>", 6, "'--' found in comment", "a---", 1, 9, 6},
        {"<a><?t data?", 12, "unterminated processing instruction", "data?", 1, 13, 9},
        {"<a><![CDATA[x]]", 12, "unterminated cdsect", "x]]", 1, 16, 14},
        {"<a b=\"1</a>", 12, "unterminated literal", "1</a>", 1, 12, 7},
        {"<a\nb='\n\n1", 12, "unterminated literal", "\n\n1", 4, 1, 3},
        {"<a>x&;</a>", 9, "illegal entity reference", "&;", 1, 7, 5},
        {"<a>x& y</a>", 9, "illegal entity reference", "& ", 1, 7, 5},
        {"<a b='x&1;'/>", 9, "illegal entity reference", "&1", 1, 10, 7},
        {"<a>x&lt y</a>", 9, "illegal reference", "&lt", 1, 9, 5},
        {"<a b='x&lt'/>", 9, "illegal reference", "&lt", 1, 12, 7},
        {"<a>x&#65</a>", 9, "illegal character reference", "&#65", 1, 10, 5},
        {"<a>&#X41;</a>", 9, "illegal character reference", "&#", 1, 7, 5},
        {"<a>&#6a;</a>", 9, "illegal character reference", "&#6", 1, 8, 5},
        {"<a>&#x4g;</a>", 9, "illegal character reference", "&#x4", 1, 9, 5},
        {"<a>&#;</a>", 9, "illegal character reference", "&#", 1, 7, 5},
        {"<a>&#x;</a>", 9, "illegal character reference", "&#x", 1, 8, 5},
        {"<a>&#-1;</a>", 9, "illegal character reference", "&#", 1, 7, 5},
        {"<a>&#0;</a>", 9, "illegal character reference value", "&#0", 1, 8, 5},
        {"<a>&#xFFFE;</a>", 9, "illegal character reference value", "&#xFFFE", 1, 12, 5},
        {"<a>&#x110000;</a>", 9, "illegal character reference value", "&#x110000", 1, 14, 5},
        {"<a>&#4294967361;</a>", 9, "illegal character reference value", "&#4294967361", 1, 17, 5},
        {"<a>&#x100000041;</a>", 9, "illegal character reference value", "&#x100000041", 1, 17, 5},
        {"<a>&#18446744073709551681;</a>", 9, "illegal character reference value",
         "&#18446744073709551681", 1, 27, 5},
        {"<?XML?><a/>", 11, "xml decl must appear first line", "XML", 1, 7, 4},
        {"\n<?xml version='1.0'?><a/>", 11, "xml decl must appear first line", "xml", 2, 6, 3},
        {"<a>\n<?xMl?></a>", 11, "xml decl must appear first line", "xMl", 2, 6, 3},
        {"<?xml version=''?><a/>", 11, "empty version number", "", 1, 17, 16},
        {"<?xml version='1 0'?><a/>", 11, "illegal version number", "1 0", 1, 20, 16},
        {"<?xml version='&#x31;'?><a/>", 11, "illegal version number", "&#x31;", 1, 23, 16},
        {"<?xml version='1' standalone=''?>", 11, "illegal standalone value", "", 1, 32, 31},
        {"<?xml version='1' standalone='maybe'?>", 11, "illegal standalone value", "maybe", 1, 37,
         31},
        {"<?xml version='1' standalone='yess'?>", 11, "illegal standalone value", "yess", 1, 36,
         31},
        {"<?xml version='1' encoding=''?>", 11, "illegal encoding first character", "", 1, 30, 29},
        {"<?xml version='1' encoding='8'?>", 11, "illegal encoding first character", "8", 1, 31,
         29},
        {"<?xml version='1' encoding='U 8'?>", 11, "illegal encoding", "U 8", 1, 33, 29},
        {"<?xml version='1' encoding='U:'?>", 11, "illegal encoding", "U:", 1, 32, 29},
        {"<?xml version='1' encoding='UTF-8859'?>", 11, "not supported encoding", "UTF-8859", 1, 38,
         29},
    };
    for (const auto& test : cases) {
        const std::string message = std::string(test.problem) + " : doc.xml (" + test.token + ')';
        expect_refused(test.document, test.code, message + at(test.line, test.column), test.line,
                       test.tokenColumn);
    }
}

// A character of two cells in hand counts both. Standard output is Shift_JIS.
TEST(Errors, WideCharacters) {
    const struct {
        const char* document;
        const char* error;
        const char* output;
    } cases[] = {
        {"<a b='1'あ='2'/>", "error 6 1:11 'doc.xml : parse error (あ) at line 1, col 11'\n",
         "doc.xml : parse error (\x82\xA0) at line 1, col 11\n"},
        {"<a/>\nあ", "error 6 2:2 'doc.xml : parse error (あ) at line 2, col 2'\n",
         "doc.xml : parse error (\x82\xA0) at line 2, col 2\n"},
        {"<あ イ='' =/>", "error 6 1:12 'doc.xml : parse error (=) at line 1, col 12'\n",
         "doc.xml : parse error (=) at line 1, col 12\n"},
        {"<あ>ｱ&あ", "error 9 1:7 'illegal reference : doc.xml (&あ) at line 1, col 10'\n",
         "illegal reference : doc.xml (&\x82\xA0) at line 1, col 10\n"},
        {"<あ></表>", "error 10 1:10 'end tag (表) not match to start tag (あ)'\n",
         "end tag (\x95\\) not match to start tag (\x82\xA0)\n"},
        {"\xEF\xBB\xBF<a/>", "error 6 1:3 'doc.xml : parse error (?) at line 1, col 3'\n",
         "doc.xml : parse error (?) at line 1, col 3\n"},
    };
    for (const auto& test : cases) {
        const Outcome outcome = parse_bytes(test.document);
        EXPECT_EQ(outcome.events.substr(outcome.events.find("error ")), test.error);
        EXPECT_EQ(outcome.output, std::string("QVOX error : ") + test.output);
    }
}

// What is reported ahead of an error stays reported, and reductions run as early as they can.
TEST(Errors, EventsAheadOfTheError) {
    const std::string a = "startElement - 'a' 'a'; endElement - 'a' 'a'; ";
    const struct {
        const char* document;
        std::string events;
    } cases[] = {
        {"\x01<a/>", "error 8 1:1 'not xml char (1)'"},
        {"<a/", "error 7 1:1 'not XML file'"},
        {"text", "startDocument; error 6 1:2 'doc.xml : parse error (t)"},
        {"<a></a><b/>", "startDocument; " + a + "endDocument; error 6 1:9"},
        {"<a/>x", "startDocument; " + a + "endDocument; error 6 1:6"},
        {"<a/></a>", "startDocument; " + a + "endDocument; error 6 1:6"},
        {"<a/><?t d", "startDocument; " + a + "error 12 1:10"},
        {"<a></b>",
         "startDocument; " + a + "error 10 1:8 'end tag (b) not match to start tag (a)'"},
        {"<a></b\n\n>", "startDocument; " + a + "error 10 3:1"},
        {"<p:a xmlns:p='u'></p:b>",
         "startDocument; startPrefixMapping 'p' 'u'; startElement 'u' 'a' 'p:a'; endElement 'u' "
         "'a' 'p:a'; endPrefixMapping 'p'; error 10 1:24 'end tag (p:b) not match"},
        {"<a>]]&gt;</a>", "startDocument; startElement - 'a' 'a'; startEntity 'gt'; error 6 1:5"},
        {"<a>x&u;",
         "startDocument; startElement - 'a' 'a'; "
         "warning 9 1:5 'entity name (u) not found'; error 12 1:5 'unterminated"},
    };
    for (const auto& test : cases) {
        const std::string events = joined(parse_bytes(test.document).events);
        EXPECT_EQ(events.substr(0, test.events.size()), test.events);
        EXPECT_EQ(events.find(';', test.events.size()), std::string::npos) << events;
    }
}

// A message has room for 4095 bytes, and is cut behind the last whole character.
TEST(Errors, LongMessages) {
    const std::string start = "unterminated char data : doc.xml (";
    const Outcome ascii = parse_bytes("<a>" + std::string(10000, 'x'));
    EXPECT_EQ(ascii.message, start + std::string(4095 - start.size(), 'x'));
    EXPECT_EQ(ascii.output, "QVOX error : " + ascii.message + '\n');
    for (const std::string shift : {"", "x"}) {
        const Outcome wide = parse_bytes("<a>" + shift + utf8(std::u16string(3000, u'\u3042')));
        const std::size_t characters = (4095 - start.size() - shift.size()) / 2;
        EXPECT_EQ(wide.message, start + shift + utf8(std::u16string(characters, u'\u3042')));
    }
}

}  // namespace
}  // namespace qvox_test
