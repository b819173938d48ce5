// The declarations of an internal subset: what is reported of each, and in which order.
#include "parser/tables.h"

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

}  // namespace
}  // namespace qvox_test
