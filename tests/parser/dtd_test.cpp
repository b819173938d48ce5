// The document type: its declarations, what they do to start tags, and its external subset.
#include "parser/tables.h"
#include "support/encode.h"

namespace qvox_test {
namespace {

std::string declared(const std::string& declarations) {
    const std::string events = events_of("<!DOCTYPE r [" + declarations + "]><r/>");
    return behind("startDTD 'r' - -; ", in_front_of("; ]; (r", events));
}

TEST(DtdDeclarations, OneByOne) {
    expect_rows(R"(
<!ELEMENT\n a\t EMPTY >                     => element 'a' 'EMPTY'
<!ELEMENT EMPTY ANY>                        => element 'EMPTY' 'ANY'
<!ELEMENT a (#PCDATA)>                      => element 'a' '(#PCDATA)'
<!ELEMENT a ( #PCDATA )* >                  => element 'a' '(#PCDATA)*'
<!ELEMENT a ( #PCDATA | b\n|c | b )*>       => element 'a' '(#PCDATA|b|c|b)*'
<!ELEMENT a (((b)+)?)*>                     => element 'a' '(((b)+)?)*'
<!ELEMENT a ( b , ( c|d? |e)* , ( f )+ )?>  => element 'a' '(b,(c|d?|e)*,(f)+)?'
<!ELEMENT あ ((p:b:c,:)|_.-1|アー*)>        => element 'あ' '((p:b:c,:)|_.-1|アー*)'
<!ATTLIST r x CDATA #IMPLIED>               => attribute 'r' 'x' 'CDATA' '#IMPLIED' -
<!ATTLIST r x ID #REQUIRED >                => attribute 'r' 'x' 'ID' '#REQUIRED' -
<!ATTLIST r x IDREF #FIXED 'v'>             => attribute 'r' 'x' 'IDREF' '#FIXED' 'v'
<!ATTLIST r x IDREFS\n''>                   => attribute 'r' 'x' 'IDREFS' - ''
<!ATTLIST r x ENTITY "it's">                => attribute 'r' 'x' 'ENTITY' - 'it\'s'
<!ATTLIST r x ENTITIES '%p;<'>              => attribute 'r' 'x' 'ENTITIES' - '%p;<'
<!ATTLIST r x NMTOKEN '\tb\n c &#33;'>      => attribute 'r' 'x' 'NMTOKEN' - '\tb\n c !'
<!ATTLIST r x NMTOKENS 'v'>                 => attribute 'r' 'x' 'NMTOKENS' - 'v'
<!ATTLIST r x ( ID | 1c|-d )\t'z'>          => attribute 'r' 'x' '(ID|1c|-d)' - 'z'
<!ATTLIST r x NOTATION\n( n | m ) 'z'>      => attribute 'r' 'x' 'NOTATION (n|m)' - 'z'
<!ENTITY\te\n"it's\n<b>" >                  => internal 'e' 'it\'s\n<b>'
<!ENTITY % e ''>                            => internal '%e' ''
<!ENTITY e SYSTEM "&f;%g;'">                => external 'e' - '&f;%g;\''
<!ENTITY e PUBLIC '-(\n1)+,/=?;!*#@$%_.:' 'f'> => external 'e' '-(\n1)+,/=?;!*#@$%_.:' 'f'
<!ENTITY % e PUBLIC "it's" '' >             => external '%e' 'it\'s' ''
<!ENTITY e SYSTEM 'f' NDATA NDATA >         => external 'e' - 'f'
<!NOTATION n SYSTEM 's'>                    => notation 'n' - 's'
<!NOTATION n PUBLIC 'p' >                   => notation 'n' 'p' -
<!NOTATION n PUBLIC 'p' 's'>                => notation 'n' 'p' 's'
<!--c--> <?p?>\n<?q d?>  => !'c'; ?'p' -; ?'q' 'd'
)",
                declared);
    // Joined text has no limit.
    const std::string model = std::string(2000, '(') + "b" + std::string(2000, ')');
    EXPECT_EQ(declared("<!ELEMENT a " + model + ">"), "element 'a' '" + model + "'");
}

// A repeated declaration is reported, and a further attribute list reports the earlier ones again.
// The warnings have the column of a '>'; the first declaration begins in column 15.
TEST(DtdDeclarations, Repeated) {
    expect_rows(R"(
<!ATTLIST r x ID '1' x CDATA '2'><!ATTLIST s><!ATTLIST r >
  => attribute 'r' 'x' 'ID' - '1'; attribute 'r' 'x' 'CDATA' - '2';
  attribute 'r' 'x' 'ID' - '1'; attribute 'r' 'x' 'CDATA' - '2'
<!ELEMENT a EMPTY><!ELEMENT a ANY> => element 'a' 'EMPTY';
  warning 0 1:48 'element decl name (a) already registered'; element 'a' 'ANY'
<!ATTLIST a x ID '1'><!ELEMENT a ANY> => attribute 'a' 'x' 'ID' - '1';
  warning 0 1:51 'element decl name (a) already registered'; element 'a' 'ANY'
<!ENTITY e '1'><!ENTITY % e '2'><!ENTITY e SYSTEM 'f'> => internal 'e' '1'; internal '%e' '2';
  warning 0 1:68 'entity decl name (e) already registered'; external 'e' - 'f'
<!ENTITY lt 'x'> => warning 0 1:30 'entity decl name (lt) already registered'; internal 'lt' 'x'
<!NOTATION n SYSTEM ''><!NOTATION n SYSTEM ''> => notation 'n' - ''; notation 'n' - ''
)",
                declared);
    struct Types : Recorder {
        void warning(const Exception& exception) override { events = quoted(exception.toString()); }
    } types;
    Options options;
    options.recorder = &types;
    parse_bytes("<!DOCTYPE r [<!ENTITY lt 'x'>]><r/>", options);
    EXPECT_EQ(in_front_of("internal", types.events), "'<SAXParseException::UNKNOWN_ERR>'");
}

// The text of %p;, a declaration, its events.
TEST(DtdDeclarations, ParameterEntitiesInsideThem) {
    const char* const table = R"(
(a|b)         => <!ELEMENT r %p;>              => &%p; element 'r' '(a|b)'
(a,b          => <!ELEMENT r %p;,c)>           => &%p; element 'r' '(a,b,c)'
x             => <!ELEMENT r (%p;b)>           => &%p; element 'r' '(xb)'
#PC           => <!ELEMENT r (%p;DATA)>        => &%p; element 'r' '(#PCDATA)'
=> <!ELEMENT r %p;%p;ANY%p;> => &%p; &%p; &%p; element 'r' 'ANY'
ANY><!ELEMENT s ANY> => <!ELEMENT r %p;<!ELEMENT t ANY>
  => <%p; element 'r' 'ANY'; >%p; element 's' 'ANY'; element 't' 'ANY'
a ID #IMPLIED => <!ATTLIST r %p; b (x) 'y'>
  => &%p; attribute 'r' 'a' 'ID' '#IMPLIED' -; attribute 'r' 'b' '(x)' - 'y'
1|b           => <!ATTLIST r a (z|%p;c) 'y'>   => &%p; attribute 'r' 'a' '(z|1|bc)' - 'y'
n             => <!ATTLIST r a NOTATION (%p;) 'y'> => &%p; attribute 'r' 'a' 'NOTATION (n)' - 'y'
'v            => <!ENTITY e %p;w'>             => &%p; internal 'e' 'vw'
png           => <!ENTITY e SYSTEM 'f' NDATA %p;> => &%p; external 'e' - 'f'
PUBLIC 'q'    => <!NOTATION n %p;>             => &%p; notation 'n' 'q' -
\s's'         => <!NOTATION n PUBLIC 'q'%p;>   => &%p; notation 'n' 'q' 's'
v             => <!ENTITY e SYSTEM '%p;'>      => external 'e' - '%p;'
v => <!ELEMENT q %zz;ANY> => warning 9 1:44 'entity name (%zz) not found'; element 'q' 'ANY'
v => <!ELEMENT q %zz; ANY> => warning 9 1:44 'entity name (%zz) not found';
  error 6 1:44 'doc.xml : parse error ( ) at line 1, col 44'
)";
    for (const Row& row : rows_of(table)) {
        EXPECT_EQ(declared("<!ENTITY % p \"" + row[0] + "\">" + row.at(1)),
                  "internal '%p' " + quoted(row[0].c_str()) + "; " + row.at(2));
    }
}

// What a number put into an entity's text means something again where another value takes that text
// in: a '%', an '&', a quote.
TEST(DtdDeclarations, EntityValues) {
    expect_rows(R"(
<!ENTITY % q 'Q'><!ENTITY p '&#37;q;'><!ENTITY v '[&p;%q;]'>
  => internal '%q' 'Q'; internal 'p' '%q;'; <p; &%q; >p; &%q; internal 'v' '[QQ]'
<!ENTITY q 'Q'><!ENTITY % p '&#38;q;'><!ENTITY v '[%p;&q;]'>
  => internal 'q' 'Q'; internal '%p' '&q;'; <%p; &q; >%p; &q; internal 'v' '[QQ]'
<!ENTITY a '&#34;>'><!ENTITY b "x&a;<!ENTITY c ''>
  => internal 'a' '">'; &a; internal 'b' 'x'; internal 'c' ''
<!ENTITY a "&quot;&#34;&#37;a;&#60;&#x20BB7;"> => &quot; internal 'a' '""%a;<𠮷'
<!ENTITY a '[&a;%a;]'> => warning 9 1:26 'entity name (a) not found';
  warning 9 1:26 'entity name (%a) not found'; internal 'a' '[]'
)",
                declared);
}

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
            EXPECT_EQ(replaced(events, "&t; ", ""), "(r" + both + "(r" + both + "); (r" + both +
                                                        "); (r [c=" + row[1] + "]" + both + "); )");
        }
    }
    const std::string reported = "attribute 'r' 'a' 'ID' - ' b\\n'; ";
    EXPECT_EQ(events_of("<!DOCTYPE r [<!ATTLIST r a ID ' b\n'><!ATTLIST r>]><r/>"),
              "startDTD 'r' - -; " + reported + reported + "]; (r [a ID='b']; )");
}

const std::string DOCTYPE = "<!DOCTYPE r SYSTEM 's.dtd'>";

// The column of a warning is that of the '>'. Behind a subset that isn't there one more token is
// read before the declaration ends.
TEST(DtdSubset, Declaration) {
    write_file("s.dtd", "<!--s-->");
    expect_rows(R"(
<!DOCTYPE\nq:x\t>\n<!--c-->     => startDTD 'q:x' - -; ]; !'c'
<!--b--><!DOCTYPE SYSTEM [ ] >  => !'b'; startDTD 'SYSTEM' - -; ]
<!DOCTYPE r PUBLIC 'p' 'no'[<!--c-->]>
  => startDTD 'r' 'p' 'no'; !'c'; warning 1 1:39 'system id (no) can\'t open'; ]
<!DOCTYPE r SYSTEM 'FILE:s.dtd'>
  => startDTD 'r' - 'FILE:s.dtd'; warning 1 1:33 'system id (FILE:s.dtd) can\'t open'; ]
<!DOCTYPE r> é => startDTD 'r' - -; ]; error 8 1:14 'not supported UTF-8 char (c3)'
<!DOCTYPE r SYSTEM 'no'> é => startDTD 'r' - 'no';
  warning 1 1:25 'system id (no) can\'t open'; error 8 1:26 'not supported UTF-8 char (c3)'
<!DOCTYPE r PUBLIC 'p' 'file:s.dtd' [<!--i-->]>
  => startDTD 'r' 'p' 'file:s.dtd'; !'i'; &[dtd]; !'s'; ]
)",
                [](const std::string& documentType) {
                    return in_front_of("; (r; )", events_of(documentType + "<r/>"));
                });
}

// The lexer holds one character beyond the token that it returns, so that the end of a file that
// ends in '>' comes before the event of the last declaration.
TEST(DtdSubset, ContentOfTheFile) {
    const auto events_of_subset = [](const std::string& subset) {
        const std::string events = events_of(DOCTYPE + "<r/>", {{"s.dtd", subset}});
        return behind("'s.dtd'; ", in_front_of("; ]; (r; )", events));
    };
    expect_rows(R"(
<!ELEMENT r ANY>\n                => <[dtd]; element 'r' 'ANY'; >[dtd]
<!ELEMENT r ANY>                  => &[dtd]; element 'r' 'ANY'
<!ELEMENT r ANY><!ELEMENT s ANY>  => <[dtd]; element 'r' 'ANY'; >[dtd]; element 's' 'ANY'
<!--c-->                          => &[dtd]; !'c'
<!--c--><!---->\n                 => <[dtd]; !'c'; !''; >[dtd]
<?p d?>                           => &[dtd]; ?'p' 'd'
<?p?>                             => &[dtd]; ?'p' -
<?p ?>                            => &[dtd]; ?'p' ''
<?x?>                             => &[dtd]; ?'x' -
\n<?x?>                           => &[dtd]; ?'x' -
\n\n\n\n                          => &[dtd]
<?xml encoding='utf-8'?>          => &[dtd]
<?xml version='1.0' encoding='UTF-8' ?>\n<!--c--> => &[dtd]; !'c'
<!ENTITY % p '(a)'><!ELEMENT r %p;> => <[dtd]; internal '%p' '(a)'; &%p; >[dtd]; element 'r' '(a)'
)",
                events_of_subset);
    EXPECT_EQ(events_of_subset("<?xml encoding='Shift_JIS'?><!NOTATION \x83\x5C SYSTEM '\xB1'>"),
              "&[dtd]; notation 'ソ' - 'ｱ'");
    EXPECT_EQ(events_of_subset(utf16be(u"\uFEFF<!NOTATION ソ SYSTEM ''>\r")),
              "<[dtd]; notation 'ソ' - ''; >[dtd]");
    // A comment may begin in the subset and end in the document.
    EXPECT_EQ(events_of(DOCTYPE + "b--><r/>", {{"s.dtd", "<!--a"}}),
              "startDTD 'r' - 's.dtd'; &[dtd]; !'ab'; ]; (r; )");
}

TEST(DtdSubset, InternalDeclarationsBind) {
    EXPECT_EQ(events_of("<!DOCTYPE r SYSTEM 's.dtd' [<!ENTITY e 'i'><!ATTLIST r a ID 'i'>]>\n"
                        "<r>&e;</r>",
                        {{"s.dtd", "<!ENTITY e 'x'>\n<!ATTLIST r a CDATA 'x'>\n"}}),
              "startDTD 'r' - 's.dtd'; internal 'e' 'i'; attribute 'r' 'a' 'ID' - 'i'; <[dtd]; "
              "warning 0 2:15 'entity decl name (e) already registered'; internal 'e' 'x'; "
              "attribute 'r' 'a' 'ID' - 'i'; attribute 'r' 'a' 'CDATA' - 'x'; >[dtd]; ]; "
              "(r [a ID='i']; &e; 'i'; )");
}

// The character behind the '>' waits in its level, and the document's line, encoding and decoder
// state come back.
TEST(DtdSubset, DocumentGoesOnBehindIt) {
    const std::string lines = std::string(99, '\n') + "<!--c-->\n";
    const std::string events = "startDTD 'r' - 's.dtd'; <[dtd]; !'c'; >[dtd]; ]; ";
    EXPECT_EQ(events_of(DOCTYPE + "\n?", {{"s.dtd", lines}}),
              events + "error 6 2:1 'doc.xml : parse error (?) at line 2, col 1'");
    EXPECT_EQ(events_of(DOCTYPE + "あ", {{"s.dtd", lines}}),
              events + "error 6 1:0 'doc.xml : parse error (あ) at line 1, col 0'");
    const std::pair<std::string, std::string> cases[] = {
        {utf16le(u"\uFEFF<!DOCTYPE r SYSTEM 's.dtd'>\r<r/>"), utf16be(u"\uFEFF<!--c-->\r\r")},
        {DOCTYPE + "\r<r/>", utf16le(u"\uFEFF<!--c-->\r")},
        {"<?xml version='1.0' encoding='iso-2022-jp'?>" + DOCTYPE + "<r/>",
         "<?xml encoding='ISO-2022-JP'?><!--c-->\n\x1B$B"},
        {"<?xml version='1.0' encoding='euc-jp'?>" + DOCTYPE + "<r/>",
         "<?xml encoding='shift_jis'?><!--c-->\n"},
    };
    for (const auto& [document, subset] : cases) {
        EXPECT_EQ(events_of(document, {{"s.dtd", subset}}), events + "(r; )");
    }
}

}  // namespace
}  // namespace qvox_test
