// What the attribute definitions of a document type do to start tags.
#include "parser/tables.h"

namespace qvox_test {
namespace {

// The events of the content behind the definitions of <r>.
std::string content_of(const std::string& definitions, const std::string& content,
                       const Options& options = {}) {
    return behind("]; ", events_of("<!DOCTYPE r [<!ENTITY e 'E<'><!ENTITY t '\n'><!ATTLIST r " +
                                       definitions + ">]>" + content,
                                   options));
}

// The first definition of a name counts, for the type as well.
TEST(DtdDefaults, SupplyWhatTheTagLacks) {
    const char* const table = R"(
a CDATA '1' b ID #IMPLIED c ID #REQUIRED d CDATA #FIXED '4' e CDATA '' => <r/>
  => [a CDATA='1'] [d CDATA='4'] [e CDATA='']
a ID '1' b CDATA #FIXED '2'         => <r z='0' b='x'></r>
  => [z='0'] [b CDATA='x'] [a ID='1']
a ID '1'                            => <r a='x' a='y'/> => [a ID='x'] [a ID='y']
a ID '1' a CDATA '2'><!ATTLIST r a CDATA '3' => <r/>    => [a ID='1']
a ID '1'><!ELEMENT r EMPTY          => <r/>             => [a ID='1']
a ID #IMPLIED a CDATA ' b  c '      => <r/>             => [a ID='b c']
x NOTATION ( n |m) #IMPLIED y ( 1|2 ) '3' => <r x=' m'/>
  => [x NOTATION (n|m)='m'] [y (1|2)='3']
x CDATA '[&e;&#38;e;]'              => <r/>             => [x CDATA='[E<&e;]']
)";
    for (const Row& row : rows_of(table)) {
        EXPECT_EQ(content_of(row[0], row.at(1)), "(r " + row.at(2) + "; )");
    }
}

// An element is matched by its local part, or by its whole name where namespaces are off; an
// attribute always by its whole name. A namespace declared by a default binds nothing.
TEST(DtdDefaults, AndNamespaces) {
    const char* const definitions = "p:a ID '1' xmlns:p ID 'v'><!ATTLIST p:r b ID '2'";
    const std::string defaults = " [- 'a' 'p:a' 'ID' '1'] [- 'p' 'xmlns:p' 'ID' 'v']; )";
    EXPECT_EQ(content_of(definitions, "<r/>"), "(r" + defaults);
    EXPECT_EQ(content_of(definitions, "<p:r/>"), "(- 'r' 'p:r'" + defaults);
    EXPECT_EQ(content_of(definitions, "<r xmlns:p='w'/>"),
              "+'p' 'w'; (r ['w' 'a' 'p:a' 'ID' '1']; ); -'p'");
    Options options;
    options.namespaces = false;
    EXPECT_EQ(content_of(definitions, "<p:r/>", options), "(- - 'p:r' [- - 'b' 'ID' '2']; )");
}

// By the declared type. The next element and the declaration itself see the default as it stands.
TEST(DtdDefaults, Normalisation) {
    const char* const table = R"(
\s                        => ' '      => ''
\t \n                     => '   '    => ''
\sa  b\s                  => ' a  b ' => 'a b'
a\r\n\tb                  => 'a  b'   => 'a b'
a\n\n\nb                  => 'a b'    => 'a b'
\na\n\t\n                 => ' a   '  => 'a'
a&#10;&#13;b&#9;c&#32;\s  => 'a b c  ' => 'a b c'
&t;x&t;                   => ' x '    => 'x'
)";
    for (const std::string type : {"ID", "IDREF", "IDREFS", "ENTITY", "ENTITIES", "NMTOKEN",
                                   "NMTOKENS", "(a|b)", "NOTATION (a|b)"}) {
        for (const Row& row : rows_of(table)) {
            const std::string value = " '" + row[0] + "'";
            const std::string both =
                " [a CDATA=" + row.at(1) + "] [b " + type + "=" + row.at(2) + "]; ";
            const std::string events =
                content_of("a CDATA" + value + " b " + type + value,
                           "<r><r/><r a=" + value + " b=" + value + "/><r c=" + value + "/></r>");
            EXPECT_EQ(std::regex_replace(events, std::regex("&t; "), ""),
                      "(r" + both + "(r" + both + "); (r" + both + "); (r [c=" + row[1] + "]" +
                          both + "); )");
        }
    }
    const std::string reported = "attribute 'r' 'a' 'ID' - ' b\\n'; ";
    EXPECT_EQ(events_of("<!DOCTYPE r [<!ATTLIST r a ID ' b\n'><!ATTLIST r>]><r/>"),
              "startDTD 'r' - -; " + reported + reported + "]; (r [a ID='b']; )");
}

}  // namespace
}  // namespace qvox_test
