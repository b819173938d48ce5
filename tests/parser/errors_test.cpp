// Every refusal of a document: code, message and place.
#include <algorithm>

#include "parser/tables.h"
#include "support/encode.h"

namespace qvox_test {
namespace {

constexpr const char* MARKS = "[@^~]";
constexpr const char* TWO_BLANKS = "(  |\n) *";

// Line and column as the scanner has them with the character behind the mark in hand. The marks
// themselves don't count. On the first line the column stands at 1 in front of the first character.
std::pair<int, int> place_of(const std::string& marked, char mark) {
    const std::string before = replaced(marked.substr(0, marked.find(mark)), MARKS, "");
    const auto line = static_cast<int>(std::count(before.begin(), before.end(), '\n')) + 1;
    const auto characters = static_cast<int>(before.size() - (before.rfind('\n') + 1));
    return {line, characters + (line == 1 ? 2 : 1)};
}

std::string at(int line, int column) {
    return " at line " + std::to_string(line) + ", col " + std::to_string(column);
}

std::string error_event(const std::string& code, int line, int column, const std::string& message) {
    return code + ' ' + std::to_string(line) + ':' + std::to_string(column) + ' ' +
           quoted(message.c_str());
}

// The error that ends a document, without its marks, as the ErrorHandler hears it. The exception
// and standard output, where a line feed is CR LF, have the same.
std::string error_of(const std::string& marked) {
    const std::string document = replaced(marked, MARKS, "");
    const Outcome outcome = parse_bytes(document);
    const std::string event = behind("error ", joined(outcome.events));
    EXPECT_EQ(outcome.type, "-") << document;
    EXPECT_EQ(replaced(event, "^(\\d+) \\d+:\\d+", "$1"),
              std::to_string(outcome.code) + ' ' + quoted(outcome.message.c_str()));
    EXPECT_EQ(outcome.output, "QVOX error : " + replaced(outcome.message, "\n", "\r\n") + '\n');
    return event;
}

// The refused token stands between '@' and '^'; the message shows a literal without its quotes. A
// text that ends too early has no '^', and '@' before its last character.
std::string syntax_error_of(const std::string& marked) {
    const auto [line, column] = place_of(marked, '@');
    const std::size_t start = marked.find('@') + 1;
    const std::size_t end = marked.find('^');
    std::string token = end == std::string::npos ? "" : marked.substr(start, end - start);
    if (token.size() > 1 && token[0] == '\'') token = token.substr(1, token.size() - 2);
    return error_event("6", line, column,
                       "doc.xml : parse error (" + token + ")" + at(line, column));
}

// Two blanks divide.
constexpr const char* DOCUMENTS = R"(
\s\s\s@\s  <!--x--@>  @t^ext  @</^a>  @<1^a/>  @<\s^a/>  @<!-x^-->  @<!>^ <a/>  @<!DOCTYP^ a><a/>
@<![CDATA[^]]><a/>  @^&lt;<a/>  <a>@<^  <a><!-@-  <a><@/  <a><?@t  <abc@>  <a b="1@"  <a b@>^</a>
<a b=@1^/>  <a @=^"1"/>  <a b="1"@c^="2"/>  <a b='1' @^&lt;/>  <a></@ ^a>  <a><?@1^?></a>
<a><?t@+^?></a>  <a>\n</a>\n@x^  \s@<?xml^ version='1.0'?><a/>  <!---->@<?xml^ version='1.0'?><a/>
<?xml @encoding^='UTF-8'?><a/>  <?xml @versio^='1.0'?><a/>  <?xml version=@1^.0?><a/>
<?xml @'^1.0'?><a/>  <?xml version='1.0' standalone='yes' @encoding^='UTF-8'?><a/>
<a><?xml version='1.0' @standalone^='yes'?></a>

<!DOCTYPE@>^  <!DOCTYPE @1^>  <!DOCTYPE r @system^ 's'>  <!DOCTYPE r SYSTEM@'s'^>
<!DOCTYPE r SYSTEM @>^  <!DOCTYPE r PUBLIC 'p'@>^  <!DOCTYPE r PUBLIC 'p'@'s'^>
<!DOCTYPE r @^%p;>  <!DOCTYPE r [@<?xml^ encoding='utf-8'?>]><r/>  <!DOCTYPE r @[
<!DOCTYPE r>@<!DOCTYPE^ r><r/>  <r/>@<!DOCTYPE^ r>  <r>@<!DOCTYPE^ r></r>  <r>@<!ELEMENT^ r></r>
@<![I^NCLUDE[]]><r/>  <r>@<![I^GNORE[]]></r>
)";

constexpr const char* SUBSETS = R"(
@<!element^ a ANY>  @<!ELEMENTS^ a ANY>  @<!-x^-->  @<!>^  @<![^INCLUDE[]]>  @<![^IGNORE[]]>
@<![^CDATA[]]>  @<a^/>  @< ^!ELEMENT a ANY>  @^%p;  @^&e;  @x^  @>^  ]@]^>  ] @[^]>  @<!^  <!-@-

<!ELEMENT@>^  <!ELEMENT@(^a) ANY>  <!ELEMENT @^%p; ANY>  <!ELEMENT @1^ ANY>  <!ELEMENT a@>^
<!ELEMENT a@(^b)>  <!ELEMENT a @b^>  <!ELEMENT a @any^>  <!ELEMENT a ANY @b^>  <!ELEMENT a (@)^>
<!ELEMENT a (@EMPTY^)>  <!ELEMENT a (b @c^)>  <!ELEMENT a (b,c@|^d)>  <!ELEMENT a (b|c@,^d)>
<!ELEMENT a (b,@)^>  <!ELEMENT a (b?@?^)>  <!ELEMENT a (b) @*^>  <!ELEMENT a (b)@(^c)>
<!ELEMENT a (#PCDATA|b)@>^  <!ELEMENT a (#PCDATA|b)@ ^*>  <!ELEMENT a (#PCDATA)@+^>
<!ELEMENT a (#PCDATA@,^b)*>  <!ELEMENT a (#PCDATA|@(^b))*>  <!ELEMENT a (b|@#PCDATA^)*>
<!ELEMENT a @#PCDATA^>  <!ELEMENT a (@# ^PCDATA)>  <!ELEMENT a (@#CDATA^)>  <!ELEMENT a AN@Y

<!ATTLIST@>^  <!ATTLIST @^%p; x ID ''>  <!ATTLIST a x@>^  <!ATTLIST a @ID^ ID ''>
<!ATTLIST a x @cdata^ 'v'>  <!ATTLIST a x ID@>^  <!ATTLIST a x ID@'v'^>  <!ATTLIST a x (b)@'v'^>
<!ATTLIST a x ID #FIXED @>^  <!ATTLIST a x ID #FIXED@'v'^>  <!ATTLIST a x ID @#fixed^ 'v'>
<!ATTLIST a x ID @# ^FIXED 'v'>  <!ATTLIST a x ID 'v'@y^ ID 'v'>  <!ATTLIST a x (@)^ 'v'>
<!ATTLIST a x (b @c^) ''>  <!ATTLIST a x (b@,^c) 'v'>  <!ATTLIST a x (@b
<!ATTLIST a x NOTATION@(^n) 'v'>  <!ATTLIST a x NOTATION (@1^) 'v'>

<!ENTITY@>^  <!ENTITY e@>^  <!ENTITY e @>^  <!ENTITY e@'v'^>  <!ENTITY %@p^ 'v'>
<!ENTITY e @system^ 'f'>  <!ENTITY e SYSTEM@'f'^>  <!ENTITY e SYSTEM @^%p;>
<!ENTITY e PUBLIC 'p'@>^  <!ENTITY e PUBLIC 'p' @>^  <!ENTITY e PUBLIC 'p'@'f'^>
<!ENTITY e SYSTEM 'f'@NDATA^ n>  <!ENTITY % e SYSTEM 'f' @NDATA^ n>  <!ENTITY e 'v' @NDATA^ n>
<!ENTITY e 'v'@'w'^>  <!NOTATION n@>^  <!NOTATION n @x^>  <!NOTATION n SYSTEM @>^
<!NOTATION @^%p;>  <!NOTATION n SYSTEM 's' @'t'^>  <!NOTATION n PUBLIC 'p'@'s'^>
)";

TEST(Errors, Syntax) {
    for (const auto& [start, table] : {std::pair("", DOCUMENTS), {"<!DOCTYPE r [\n", SUBSETS}}) {
        for (const std::string& cell : parts_of(table, TWO_BLANKS)) {
            if (cell.empty()) continue;
            const std::string marked = start + unescaped(cell);
            EXPECT_EQ(error_of(marked), syntax_error_of(marked)) << marked;
        }
    }
    // Where the lexer reads white space or a second character, its line is behind the token's.
    EXPECT_EQ(error_of("<a></\n\na>"), "6 3:0 'doc.xml : parse error (\\n\\n) at line 3, col 0'");
    EXPECT_EQ(error_of("<a>\r</a>\r\n\rx"), "6 4:1 'doc.xml : parse error (x) at line 4, col 1'");
    EXPECT_EQ(parse_bytes("<a><!--a--日--></a>").code, qvox::QVOXException::SYNTAX_ERR);
    EXPECT_EQ(error_of("<a b=''c\n=''/>"), "6 2:9 'doc.xml : parse error (c) at line 2, col 9'");
}

// '@' stands before the token, '~' before the last character that was read. The message has the
// column of the one, the ErrorHandler that of the other.
TEST(Errors, Tokens) {
    const char* const table = R"(
12 unterminated char data:  <a>@tex~t (text)  <a>@x&amp~; (x&)
6 unexpected token found:  <a>@x]]~>y</a> (]]>)  <a>@]]&gt~;</a> (]]>)
12 unterminated comment:  <a><!--@~x (x)  [<!--@a~b (ab)
6 '--' found in comment:  <!--@ a --~ b --><a/> ( a -- )  <!--@--~-><a/> (---)
  <!--@a--~-><a/> (a---)  [<!--@a--~b--> (a--b)
12 unterminated processing instruction:  <a><?t @data~? (data?)  [<?p @d~e (de)
12 unterminated cdsect:  <a><![CDATA[@x]~] (x]])
12 unterminated literal:  <a b=@"1</a~> (1</a>)  <a\nb=@'\n\n~1 (\n\n1)
  [<!ATTLIST a x ID @'v~> (v>)  [<!ENTITY e @'a&amp~; (a&)
9 illegal entity reference:  <a>@x&~;</a> (&;)  <a>@x&~ y</a> (& )  <a b=@'x&~1;'/> (&1)
  [<!ENTITY e @'a&~ '> (& )
9 illegal reference:  <a>@x&lt~ y</a> (&lt)  <a b=@'x&lt~'/> (&lt)  [<!ENTITY e @'a&b~<;'> (&b)
9 illegal parameter entity reference:  [<!ELEMENT a @%~ p;> (% )  [<!ENTITY e @'a%~ '> (% )
9 illegal parameter reference:  [<!ELEMENT a @%p~ ;> (%p)  [<!ENTITY e @'a%~b (%b)
9 illegal character reference:  <a>@x&#65~</a> (&#65)  <a>@&#~X41;</a> (&#)  <a>@&#6~a;</a> (&#6)
  <a>@&#x4~g;</a> (&#x4)  <a>@&#~;</a> (&#)  <a>@&#x~;</a> (&#x)  <a>@&#~-1;</a> (&#)
  [<!ENTITY e @'&#x~;'> (&#x)  [<!ENTITY e @'&#~X41;'> (&#)  [<!ENTITY e @'&#6~a;'> (&#6)
  [<!ATTLIST a x ID @'&#~;'> (&#)
9 illegal character reference value:  <a>@&#0~;</a> (&#0)  <a>@&#xFFFE~;</a> (&#xFFFE)
  <a>@&#x110000~;</a> (&#x110000)  <a>@&#4294967361~;</a> (&#4294967361)
  <a>@&#x100000041~;</a> (&#x100000041)  <a>@&#18446744073709551681~;</a> (&#18446744073709551681)
  [<!ENTITY e @'&#0~;'> (&#0)  [<!ENTITY e @'&#xD800~;'> (&#xD800)
  [<!ENTITY e @'&#4294967361~;'> (&#4294967361)
8 illegal public id:  [<!ENTITY e PUBLIC @'p{~' 'f'> (p{)  [<!NOTATION n PUBLIC @'"~'> (")
11 xml decl must appear first line:  <?@XML~?><a/> (XML)  \n<?@xml~ version='1.0'?><a/> (xml)
  <a>\n<?@xMl~?></a> (xMl)  [<?@xml~ version='1.0'?> (xml)  [<?@XML~?> (XML)
11 empty version number:  <?xml version=@'~'?><a/> ()
11 illegal version number:  <?xml version=@'1 0~'?> (1 0)  <?xml version=@'&#x31;~'?> (&#x31;)
11 illegal standalone value:  <?xml version='1' standalone=@'~'?> ()
  <?xml version='1' standalone=@'maybe~'?> (maybe)  <?xml version='1' standalone=@'yess~'?> (yess)
11 illegal encoding first character:  <?xml version='1' encoding=@'~'?> ()
  <?xml version='1' encoding=@'8~'?> (8)
11 illegal encoding:  <?xml version='1' encoding=@'U 8~'?> (U 8)
  <?xml version='1' encoding=@'U:~'?> (U:)
11 not supported encoding:  <?xml version='1' encoding=@'UTF-8859~'?> (UTF-8859)
)";
    for (const std::string& line : parts_of(table, "\n(?! )")) {
        const Row cells = parts_of(line, TWO_BLANKS);
        const std::string problem = behind(" ", in_front_of(":", cells[0]));
        for (std::size_t i = 1; i < cells.size(); ++i) {
            const std::string cell = unescaped(replaced(cells[i], "^\\[", "<!DOCTYPE r [\\n"));
            const std::string marked = in_front_of(" (", cell);
            const auto [lastLine, last] = place_of(marked, '~');
            const std::string message =
                problem + " : doc.xml (" + behind(" (", cell) + at(lastLine, last);
            EXPECT_EQ(error_of(marked), error_event(in_front_of(" ", line), lastLine,
                                                    place_of(marked, '@').second, message));
        }
    }
    EXPECT_EQ(error_of("<a>text\n"),
              "12 2:5 'unterminated char data : doc.xml (text\\n) at line 2, col 0'");
}

// A character of two cells in hand counts both. Standard output is Shift_JIS.
TEST(Errors, WideCharacters) {
    expect_rows(R"(
<a b='1'あ='2'/> => 6 1:11 'doc.xml : parse error (あ) at line 1, col 11'
<a/>\nあ => 6 2:2 'doc.xml : parse error (あ) at line 2, col 2'
<あ イ='' =/> => 6 1:12 'doc.xml : parse error (=) at line 1, col 12'
<あ>ｱ&あ => 9 1:7 'illegal reference : doc.xml (&あ) at line 1, col 10'
﻿<a/> => 6 1:3 'doc.xml : parse error (?) at line 1, col 3'
)",
                [](const std::string& document) {
                    return behind("error ", joined(parse_bytes(document).events));
                });
    EXPECT_EQ(parse_bytes("<あ></表>").output,
              "QVOX error : end tag (\x95\\) not match to start tag (\x82\xA0)\n");
}

// What is reported ahead of an error stays reported, and reductions run as early as they can.
TEST(Errors, EventsAheadOfTheError) {
    expect_rows(R"(
<a>&#0;             => (a; error 9 1:5
<a/                 => error 7 1:1
text                => startDocument; error 6 1:2
<a></a><b/>         => (a; ); endDocument; error 6 1:9
<a/>x               => (a; ); endDocument; error 6 1:6
<a/></a>            => (a; ); endDocument; error 6 1:6
<a/><?t d           => (a; ); error 12 1:10
<a></b>             => (a; ); error 10 1:8
<a></b\n\n>         => (a; ); error 10 3:1
<p:a xmlns:p='u'></p:b> => +'p' 'u'; ('u' 'a' 'p:a'; )'u' 'a' 'p:a'; -'p'; error 10 1:24
<a>]]&gt;</a>       => (a; <gt; error 6 1:5
<a>x&u;             => (a; warning 9 1:5 'entity name (u) not found'; error 12 1:5
)",
                [](const std::string& document) {
                    const std::string events = short_form(parse_bytes(document).events);
                    return events.substr(0, events.find(" '", events.find("error ")));
                });
}

// The first line goes on in the column where the document stood, which is 0 here. A file that ends
// inside a declaration is refused on the line of the document, which goes on.
TEST(Errors, ExternalSubset) {
    expect_rows(R"(
<!ELEMENT r                       => 6 4:11 'doc.xml : parse error (r) at line 4, col 11'
\n<!ELEMENT r\s                   => 6 4:12 'doc.xml : parse error ( \n) at line 4, col 12'
\n<!ELEMENT>                      => 6 2:10 'doc.xml : parse error (>) at line 2, col 10'
\n<![INCLUDE[\n]]>                => 6 2:1 'doc.xml : parse error (<![) at line 2, col 1'
\n<!ENTITY % p ''>%p;             => 6 2:17 'doc.xml : parse error () at line 2, col 17'
\n]\n\n                           => 6 3:1 'doc.xml : parse error (]) at line 3, col 1'
<?xml version='1.0'?>             => 6 4:20 'doc.xml : parse error (?) at line 4, col 20'
<!--c--><?xml encoding='utf-8'?>  => 6 1:9 'doc.xml : parse error (<?xml) at line 1, col 9'
<?xml encoding='UTF-16'?> => 11 1:16 'encoding decl not match to XML file format : doc.xml (UTF-16)
  at line 1, col 23'
<!>                               => 7 4:2 'not XML file'
=> 7 4:2 'not XML file'
\n<!--é-->                        => 8 2:1 'not supported UTF-8 char (c3)'
)",
                [](const std::string& subset) {
                    return behind("error ", events_of("<!DOCTYPE r SYSTEM 's.dtd' [\n\n]>\n<r/>",
                                                      {{"s.dtd", subset}}));
                });
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
