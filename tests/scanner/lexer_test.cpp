// The tokens that the lexer makes, in the states of the document and of the document type.
#include "scanner/lexer.h"

#include <sstream>

#include <gtest/gtest.h>

#include "input/parse_state.h"

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

// A token as in "NAME=a". A name without value stands for itself.
std::string text_of(int token) {
    if (token < 257) return std::string(1, static_cast<char>(token));
    std::istringstream names(NAMES);
    std::string name;
    for (int i = 257; i <= token; ++i) names >> name;
    if (name.back() != '=') return name;
    std::string value = quoted(tokenValue);
    return name + value.substr(1, value.size() - 2);
}

// All tokens up to the end, or up to NO_TOKEN and the text in which it was found. `subset` is
// opened behind the first '>' of the document type.
std::string tokens_of_open_input(const char* subset = nullptr) {
    std::string tokens;
    for (int token = 0; (token = next_token()) != 0;) {
        tokens += text_of(token) + ' ';
        if (token == NO_TOKEN) return tokens + joined(quoted(terminated_token()) + '\n');
        if (subset != nullptr && token == TAG_CLOSE && main_state() == LEX_DOCUMENT) {
            push_external_subset(stream_of(std::exchange(subset, nullptr)));
        }
    }
    EXPECT_EQ(stateTop, 0) << tokens;
    return tokens.substr(0, tokens.size() - 1);
}

void expect_tokens(const char16_t* document, const std::string& tokens) {
    ParseState state;
    register_entity_decl(units(u"%p"), units(u"b|c)>"), nullptr, nullptr, nullptr);
    register_entity_decl(units(u"e"), units(u"<b"), nullptr, nullptr, nullptr);
    ParseState::open_memory(document);
    EXPECT_EQ(tokens_of_open_input(), tokens);
}

struct Case {
    const char16_t* document;
    const char* tokens;
};

TEST(Lexer, Document) {
    const Case cases[] = {
        {u"<?xml version=\"1.0\"?>", "XML_DECL S version = VERSION=1.0 PI_END"},
        {u"<?xml standalone='no'encoding='utf-16'?>",
         "XML_DECL S standalone = NO=no encoding = ENC_NAME=utf-16 PI_END"},
        {u"<?xml versions", "XML_DECL S NO_TOKEN 'versions'"},
        {u"<a x=\"1\">t<b/></a>",
         "STAG NAME=a S NAME=x = ATT_VALUE=1 > CHARDATA=t STAG NAME=b /> ETAG NAME=a >"},
        {u"<a> &amp;<b/>&e;/></a>",
         "STAG NAME=a > CHARDATA= & STAG NAME=b /> STAG NAME=b /> ETAG NAME=a >"},
        {u"<?pi data?>\n<?pi?>",
         "PI_START PI_TARGET=pi S PI_DATA=data PI_END S PI_START "
         "PI_TARGET=pi PI_END"},
        {u"<?x?><?xM ?>", "PI_START PI_TARGET=x PI_END PI_START PI_TARGET=xM S PI_DATA= PI_END"},
        {u"<!-- c --><!----><!--&-->",
         "COMMENT_START COMMENT= c  COMMENT_END COMMENT_START COMMENT= COMMENT_END COMMENT_START "
         "COMMENT=& COMMENT_END"},
        {u"<a><![CDATA[%]]]]>&#x41;</a>",
         "STAG NAME=a > CDATA_START CDATA=%]] CDATA_END CHARDATA=A ETAG NAME=a >"},
        {u"<![CDATA [", "NO_TOKEN '<![CDATA'"},
        {u"<!doctype", "NO_TOKEN '<!doctype'"},
        {u"<a b='1'/ >", "STAG NAME=a S NAME=b = ATT_VALUE=1 NO_TOKEN '/'"},
        {u"\uFEFF<a/>", "NO_TOKEN '\uFEFF'"},
    };
    for (const Case& test : cases) expect_tokens(test.document, test.tokens);
}

TEST(Lexer, DocumentType) {
    const Case cases[] = {
        {u"<!DOCTYPE a SYSTEM \"s\" [<!ELEMENT a (b,c?)*>]>",
         "DOCTYPE S NAME=a S SYSTEM S SYSTEM=s S [ ELEMENT S NAME=a S ( NAME=b , NAME=c ? ) * > ] "
         ">"},
        {u"<!DOCTYPE a PUBLIC 'p'\"s\"[]>", "DOCTYPE S NAME=a S PUBLIC S PUBID=p SYSTEM=s [ ] >"},
        {u"<!DOCTYPE a PUBLIC 'p'>", "DOCTYPE S NAME=a S PUBLIC S PUBID=p NO_TOKEN '>'"},
        {u"<!DOCTYPE a[<!ELEMENT ANY ANY><!ELEMENT b (ANY|#PCDATA+)>]>",
         "DOCTYPE S NAME=a [ ELEMENT S NAME=ANY S ANY=ANY > ELEMENT S NAME=b S ( ANY=ANY | "
         "PCDATA=#PCDATA + ) > ] >"},
        {u"<!DOCTYPE a[<!ATTLIST CDATA x CDATA #IMPLIED ID IDREF IDREFS ENTITY ENTITIES NMTOKEN "
         u"NMTOKENS#REQUIRED#FIXED'v'(1-a|CDATA)>]>",
         "DOCTYPE S NAME=a [ ATTLIST S NAME=CDATA S NAME=x S CDATA=CDATA S IMPLIED=#IMPLIED S "
         "ID=ID S IDREF=IDREF S IDREFS=IDREFS S ENTITY=ENTITY S ENTITIES=ENTITIES S "
         "NMTOKEN=NMTOKEN S NMTOKENS=NMTOKENS REQUIRED=#REQUIRED FIXED=#FIXED ATT_VALUE=v ( "
         "NMTOKEN=1-a | NMTOKEN=CDATA ) > ] >"},
        {u"<!DOCTYPE a[<!ATTLIST b NOTATION (ID|n)>]>",
         "DOCTYPE S NAME=a [ ATTLIST S NAME=b S NOTATION=NOTATION S ( NAME=ID | NAME=n ) > ] >"},
        {u"<!DOCTYPE a[<!ENTITY % p \"w\"><!ENTITY e SYSTEM's'NDATA n>]>",
         "DOCTYPE S NAME=a [ ENTITY_DECL S % S NAME=p S ENTITY_VALUE=w > ENTITY_DECL S NAME=e S "
         "SYSTEM SYSTEM=s NDATA S NAME=n > ] >"},
        {u"<!DOCTYPE a[<!NOTATION n PUBLIC 'p'><!NOTATION n PUBLIC 'p''s'>]>",
         "DOCTYPE S NAME=a [ NOTATION_DECL S NAME=n S PUBLIC S PUBID=p > NOTATION_DECL S NAME=n S "
         "PUBLIC S PUBID=p SYSTEM=s > ] >"},
        // The text of %p; goes on where the reference stood, and ends the declaration.
        {u"<!DOCTYPE a[<!ELEMENT a(%p;<?p?>]>",
         "DOCTYPE S NAME=a [ ELEMENT S NAME=a ( NAME=b | "
         "NAME=c ) > PI_START PI_TARGET=p PI_END ] >"},
        {u"<!DOCTYPE a[%p;", "DOCTYPE S NAME=a [ NO_TOKEN ''"},
    };
    for (const Case& test : cases) expect_tokens(test.document, test.tokens);
}

// The grammar lets none of these through.
TEST(Lexer, ConditionalSections) {
    const Case cases[] = {
        {u"<![INCLUDE[ x", "COND_START INCLUDE [ S NO_TOKEN 'x'"},
        {u"<![ INCLUDE [<", "COND_START S INCLUDE S [ NO_TOKEN '<'"},
        {u"<![IGNORE[]]>", "COND_START IGNORE [ IGNORE_TEXT COND_END"},
        {u"<![ IGNORE [%<![ ]] ]]> ]>]]>\n", "COND_START S IGNORE S [ IGNORE_TEXT COND_END S"},
        {u"<a><![IGNORE[&]]]>b</a>",
         "STAG NAME=a > COND_START IGNORE [ IGNORE_TEXT COND_END CHARDATA=b ETAG NAME=a >"},
        {u"<![INCLUDES[", "COND_START NO_TOKEN 'INCLUDES'"},
        {u"<![x", "COND_START NO_TOKEN 'x'"},
        {u"<![IGNORE x", "COND_START IGNORE S NO_TOKEN 'x'"},
    };
    for (const Case& test : cases) expect_tokens(test.document, test.tokens);
    const Outcome outcome =
        observe([] { expect_tokens(u"<![IGNORE[<![a]]>", "an unterminated section"); });
    EXPECT_EQ(std::to_string(outcome.code) + ' ' + outcome.message,
              "12 unterminated ignore section : (memory) (<![a]]>) at line 1, col 18");
}

// The end of the subset is met while the token before it is made; no pending token is lost by that.
TEST(Lexer, EndOfExternalSubset) {
    const struct {
        const char* subset;
        const char* tokens;
    } cases[] = {
        {"<!ELEMENT a ANY>", "ELEMENT S NAME=a S ANY=ANY >"},
        {"<!--c-->", "COMMENT_START COMMENT=c COMMENT_END"},
        {"<?p d?>", "PI_START PI_TARGET=p S PI_DATA=d PI_END"},
        {"<?p?>", "PI_START PI_TARGET=p PI_END"},
        {"<?x?>", "PI_START PI_TARGET=x PI_END"},
        {"<?xml encoding='utf-8'?>", "XML_DECL S encoding = ENC_NAME=utf-8 PI_END"},
        {"    ", "S"},
    };
    for (const auto& test : cases) {
        ParseState state;
        state.open_file("<!DOCTYPE a><a/>");
        EXPECT_EQ(tokens_of_open_input(test.subset), "DOCTYPE S NAME=a > SUBSET_START " +
                                                         std::string(test.tokens) +
                                                         " SUBSET_END STAG NAME=a />");
    }
}

}  // namespace
}  // namespace qvox_test
