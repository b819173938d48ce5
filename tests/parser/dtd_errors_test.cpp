// Every refusal inside a document type declaration: code, message and place.
#include "parser/dtd_support.h"

namespace qvox_test {
namespace {

// Line and column as the scanner has them with the character behind the mark in hand. The marks
// themselves don't count. On the first line the column stands at 1 in front of the first character.
std::pair<int, int> place_of(const std::string& marked, char mark) {
    const std::regex marks("[@^~]");
    const std::string before = std::regex_replace(marked.substr(0, marked.find(mark)), marks, "");
    const auto line = static_cast<int>(std::count(before.begin(), before.end(), '\n')) + 1;
    const auto characters = static_cast<int>(before.size() - (before.rfind('\n') + 1));
    return {line, characters + (line == 1 ? 2 : 1)};
}

std::string error_event(const std::string& code, int line, int column, const std::string& message) {
    return code + ' ' + std::to_string(line) + ':' + std::to_string(column) + ' ' +
           quoted(message.c_str());
}

// The error that ends a document, without its marks.
std::string error_of(const std::string& marked) {
    return behind("error ", events_of(std::regex_replace(marked, std::regex("[@^~]"), "")));
}

// The refused token stands between '@' and '^'; the message shows a literal without its quotes. A
// text that ends too early has no '^', and '@' before its last character.
std::string syntax_error_of(const std::string& marked) {
    const auto [line, column] = place_of(marked, '@');
    const std::size_t at = marked.find('@') + 1;
    const std::size_t end = marked.find('^');
    std::string token = end == std::string::npos ? "" : marked.substr(at, end - at);
    if (token.size() > 1 && token[0] == '\'') token = token.substr(1, token.size() - 2);
    return error_event("6", line, column,
                       "doc.xml : parse error (" + token + ") at line " + std::to_string(line) +
                           ", col " + std::to_string(column));
}

// Two blanks divide.
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

constexpr const char* DOCUMENTS = R"(
<!DOCTYPE@>^  <!DOCTYPE @1^>  <!DOCTYPE r @system^ 's'>  <!DOCTYPE r SYSTEM@'s'^>
<!DOCTYPE r SYSTEM @>^  <!DOCTYPE r PUBLIC 'p'@>^  <!DOCTYPE r PUBLIC 'p'@'s'^>
<!DOCTYPE r @^%p;>  <!DOCTYPE r [@<?xml^ encoding='utf-8'?>]><r/>  <!DOCTYPE r @[
<!DOCTYPE r>@<!DOCTYPE^ r><r/>  <r/>@<!DOCTYPE^ r>  <r>@<!DOCTYPE^ r></r>  <r>@<!ELEMENT^ r></r>
@<![I^NCLUDE[]]><r/>  <r>@<![I^GNORE[]]></r>
)";

TEST(DtdErrors, Syntax) {
    const std::regex blanks("  +");
    for (const Row& row : rows_of(std::regex_replace(SUBSETS, blanks, "\n"))) {
        const std::string marked = "<!DOCTYPE r [\n" + row[0];
        EXPECT_EQ(error_of(marked), syntax_error_of(marked)) << row[0];
    }
    for (const Row& row : rows_of(std::regex_replace(DOCUMENTS, blanks, "\n"))) {
        EXPECT_EQ(error_of(row[0]), syntax_error_of(row[0])) << row[0];
    }
    // Here the refused token is the second of white space; its column is that of the reference.
    EXPECT_EQ(error_of("<!DOCTYPE r [\n<!ELEMENT q %zz; ANY>"),
              "6 2:13 'doc.xml : parse error ( ) at line 2, col 13'");
}

// '@' stands before the token, '~' before the last character that was read.
TEST(DtdErrors, Tokens) {
    const char* const table = R"(
<!--@a~b                        => 12 => unterminated comment               => (ab)
<!--@a--~b-->                   => 6  => '--' found in comment              => (a--b)
<?p @d~e                        => 12 => unterminated processing instruction => (de)
<?@xml~ version='1.0'?>         => 11 => xml decl must appear first line    => (xml)
<?@XML~?>                       => 11 => xml decl must appear first line    => (XML)
<!ELEMENT a @%~ p;>             => 9  => illegal parameter entity reference => (% )
<!ELEMENT a @%p~ ;>             => 9  => illegal parameter reference        => (%p)
<!ATTLIST a x ID @'&#~;'>       => 9  => illegal character reference        => (&#)
<!ATTLIST a x ID @'v~>          => 12 => unterminated literal               => (v>)
<!ENTITY e PUBLIC @'p{~' 'f'>   => 8  => illegal public id                  => (p{)
<!NOTATION n PUBLIC @'"~'>      => 8  => illegal public id                  => (")
<!ENTITY e @'a%~ '>             => 9  => illegal parameter entity reference => (% )
<!ENTITY e @'a%~b               => 9  => illegal parameter reference        => (%b)
<!ENTITY e @'a&~ '>             => 9  => illegal entity reference           => (& )
<!ENTITY e @'a&b~<;'>           => 9  => illegal reference                  => (&b)
<!ENTITY e @'&#x~;'>            => 9  => illegal character reference        => (&#x)
<!ENTITY e @'&#~X41;'>          => 9  => illegal character reference        => (&#)
<!ENTITY e @'&#6~a;'>           => 9  => illegal character reference        => (&#6)
<!ENTITY e @'&#0~;'>            => 9  => illegal character reference value  => (&#0)
<!ENTITY e @'&#xD800~;'>        => 9  => illegal character reference value  => (&#xD800)
<!ENTITY e @'&#4294967361~;'>   => 9  => illegal character reference value  => (&#4294967361)
<!ENTITY e @'a&amp~;            => 12 => unterminated literal               => (a&)
)";
    for (const Row& row : rows_of(table)) {
        const std::string marked = "<!DOCTYPE r [\n" + row[0];
        const std::string message = row[2] + " : doc.xml " + row.at(3) + " at line 2, col " +
                                    std::to_string(place_of(marked, '~').second);
        EXPECT_EQ(error_of(marked), error_event(row[1], 2, place_of(marked, '@').second, message));
    }
}

// The first line goes on in the column where the document stood, which is 0 here. A file that ends
// inside a declaration is refused on the line of the document, which goes on.
TEST(DtdErrors, ExternalSubset) {
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

}  // namespace
}  // namespace qvox_test
