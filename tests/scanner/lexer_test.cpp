// The tokens that the lexer makes, in the states of the document and of the document type.
#include "scanner/lexer.h"

#include "input/parse_state.h"
#include "parser/dtd_support.h"

namespace qvox_test {
namespace {

using namespace qvox;

// From 257 on, in the order of their numbers. Those with '=' have a value.
constexpr const char* NAMES =
    "S IGNORABLE_WS= NAME= NMTOKEN= ENTITY_VALUE= ATT_VALUE= SYSTEM= PUBID= CHARDATA= "
    "COMMENT_START "
    "COMMENT_END COMMENT= PI_START PI_END XML_DECL PI_TARGET= PI_DATA= CDATA_START CDATA_END "
    "CDATA= "
    "version VERSION= DOCTYPE standalone YES= NO= - - - - STAG > ETAG /> ELEMENT EMPTY= ANY= "
    "PCDATA= ATTLIST CDATA= ID= IDREF= IDREFS= ENTITY= ENTITIES= NMTOKEN= NMTOKENS= NOTATION= "
    "REQUIRED= IMPLIED= FIXED= COND_START COND_END INCLUDE IGNORE IGNORE_TEXT ENTITY_DECL SYSTEM "
    "PUBLIC NDATA encoding ENC_NAME= NOTATION_DECL SUBSET_START SUBSET_END NO_TOKEN";

std::string text_of(int token) {
    if (token < 257) return std::string(1, static_cast<char>(token));
    std::istringstream names(NAMES);
    std::string name;
    for (int i = 257; i <= token; ++i) names >> name;
    return name.back() == '=' ? name + quoted(tokenValue) : name;
}

// All tokens up to the end, or up to NO_TOKEN and the text in which it was found. `subset` is
// opened behind the '>' of the document type.
std::string tokens_of(const std::string& document, const char* subset = nullptr) {
    ParseState state;
    register_entity_decl(units(u"%p"), units(u"b|c)>"), nullptr, nullptr, nullptr);
    register_entity_decl(units(u"e"), units(u"<b"), nullptr, nullptr, nullptr);
    state.open(document);
    std::string tokens;
    for (int token = 0; (token = next_token()) != 0;) {
        tokens += (tokens.empty() ? "" : " ") + text_of(token);
        if (token == NO_TOKEN) return tokens + ' ' + quoted(terminated_token());
        if (subset != nullptr && token == TAG_CLOSE && main_state() == LEX_DOCUMENT) {
            push_external_subset(stream_of(std::exchange(subset, nullptr)));
        }
    }
    EXPECT_EQ(stateTop, 0) << tokens;
    return tokens;
}

TEST(Lexer, Tokens) {
    expect_rows(R"(
<?xml version="1.0"?> => XML_DECL S version = VERSION='1.0' PI_END
<?xml standalone='no'encoding='utf-8'?> => XML_DECL S standalone = NO='no' encoding =
  ENC_NAME='utf-8' PI_END
<a x="1">t<b/></a> => STAG NAME='a' S NAME='x' = ATT_VALUE='1' > CHARDATA='t' STAG NAME='b' />
  ETAG NAME='a' >
<a> &amp;<b/>&e;/></a> => STAG NAME='a' > CHARDATA=' &' STAG NAME='b' /> STAG NAME='b' /> ETAG
  NAME='a' >
<?pi data?>\n<?pi?> => PI_START PI_TARGET='pi' S PI_DATA='data' PI_END S PI_START PI_TARGET='pi'
  PI_END
<?x?><?xM ?> => PI_START PI_TARGET='x' PI_END PI_START PI_TARGET='xM' S PI_DATA='' PI_END
<!----><!--& --> => COMMENT_START COMMENT='' COMMENT_END COMMENT_START COMMENT='& ' COMMENT_END
<a><![CDATA[%]]]]>&#65;</a> => STAG NAME='a' > CDATA_START CDATA='%]]' CDATA_END CHARDATA='A' ETAG
  NAME='a' >
<!DOCTYPE a SYSTEM "s" [<!ELEMENT a (b,c?)*>]> => DOCTYPE S NAME='a' S SYSTEM S SYSTEM='s' S [
  ELEMENT S NAME='a' S ( NAME='b' , NAME='c' ? ) * > ] >
<!DOCTYPE a[<!ELEMENT ANY ANY><!ELEMENT b (ANY|#PCDATA+)>]> => DOCTYPE S NAME='a' [ ELEMENT S
  NAME='ANY' S ANY='ANY' > ELEMENT S NAME='b' S ( ANY='ANY' | PCDATA='#PCDATA' + ) > ] >
<!DOCTYPE a[<!ATTLIST ID x IDREF#FIXED'v'(1-a|ID)NOTATION (ID)>]> => DOCTYPE S NAME='a' [ ATTLIST S
  NAME='ID' S NAME='x' S IDREF='IDREF' FIXED='#FIXED' ATT_VALUE='v' ( NMTOKEN='1-a' | NMTOKEN='ID' )
  NOTATION='NOTATION' S ( NAME='ID' ) > ] >
<!DOCTYPE a[<!ENTITY % p "w"><!ENTITY e SYSTEM's'NDATA n>]> => DOCTYPE S NAME='a' [ ENTITY_DECL S %
  S NAME='p' S ENTITY_VALUE='w' > ENTITY_DECL S NAME='e' S SYSTEM SYSTEM='s' NDATA S NAME='n' > ] >
<!DOCTYPE a[<!ELEMENT a(%p;<?p?>]> => DOCTYPE S NAME='a' [ ELEMENT S NAME='a' ( NAME='b' |
  NAME='c' ) > PI_START PI_TARGET='p' PI_END ] >
<!DOCTYPE a PUBLIC 'p'> => DOCTYPE S NAME='a' S PUBLIC S PUBID='p' NO_TOKEN '>'
<!doctype a> => NO_TOKEN '<!doctype'
<a b='1'/ > => STAG NAME='a' S NAME='b' = ATT_VALUE='1' NO_TOKEN '/'
)",
                [](const std::string& document) { return tokens_of(document); });
}

// The grammar lets none of these through.
TEST(Lexer, ConditionalSections) {
    expect_rows(R"(
<![INCLUDE[ x                => COND_START INCLUDE [ S NO_TOKEN 'x'
<![ INCLUDE [<               => COND_START S INCLUDE S [ NO_TOKEN '<'
<![IGNORE[]]>                => COND_START IGNORE [ IGNORE_TEXT COND_END
<![ IGNORE [%<![ ]] ]]> ]>]]>\n => COND_START S IGNORE S [ IGNORE_TEXT COND_END S
<a><![IGNORE[&]]]></a>       => STAG NAME='a' > COND_START IGNORE [ IGNORE_TEXT COND_END ETAG NAME='a' >
<![INCLUDES[                 => COND_START NO_TOKEN 'INCLUDES'
<![IGNORE x                  => COND_START IGNORE S NO_TOKEN 'x'
)",
                [](const std::string& document) { return tokens_of(document); });
    const Outcome outcome = observe([] { tokens_of("<![IGNORE[<![a]]>"); });
    EXPECT_EQ(std::to_string(outcome.code) + ' ' + outcome.message,
              "12 unterminated ignore section : doc.xml (<![a]]>) at line 1, col 18");
}

// The end of the subset is met while the token before it is made; no pending token is lost by that.
TEST(Lexer, EndOfExternalSubset) {
    expect_rows(R"(
<!ELEMENT a ANY>          => ELEMENT S NAME='a' S ANY='ANY' >
<!--c-->                  => COMMENT_START COMMENT='c' COMMENT_END
<?p d?>                   => PI_START PI_TARGET='p' S PI_DATA='d' PI_END
<?x?>                     => PI_START PI_TARGET='x' PI_END
<?xml encoding='utf-8'?>  => XML_DECL S encoding = ENC_NAME='utf-8' PI_END
)",
                [](const std::string& subset) {
                    const std::string tokens = tokens_of("<!DOCTYPE a><a/>", subset.c_str());
                    return behind("> SUBSET_START ", in_front_of(" SUBSET_END STAG", tokens));
                });
}

}  // namespace
}  // namespace qvox_test
