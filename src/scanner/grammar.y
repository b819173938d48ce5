/* The language of documents, in the order in which a reader would explain one. The rules follow the
   productions of XML 1.0 and have their names where there is one. Each reduction calls its action as
   early as the automaton allows: in a state that has nothing but a reduction no token is read first,
   which is what lets the external subset start right behind the '>' of its declaration, and what the
   records of start tags rely on.

   References never get here: the scanner has replaced them. */

%define api.prefix {grammar_}
%define api.pure full
%define parse.error custom
%expect 0

%parse-param {qvox::Grammar& grammar}
%lex-param {qvox::Grammar& grammar}

%code requires {
#include "scanner/token_value.h"

namespace qvox {
class Grammar;
struct DefaultDecl;
struct ElementRecord;
struct ExternalId;
struct ParameterEntityDef;
struct Pieces;
}
}

%union {
    qvox::TokenValue token;
    qvox::Pieces* pieces;
    const qvox::ExternalId* externalId;
    const qvox::DefaultDecl* defaultDecl;
    const qvox::ParameterEntityDef* parameterEntity;
    qvox::ElementRecord* element;
}

%code {
#define YYSTYPE_IS_TRIVIAL 1
#define YYINITDEPTH 200
#define YYMAXDEPTH 10000

#include <cstddef>

#include "scanner/grammar.h"

// The parser's stacks go with the parse, also when an exception passes through.
#define YYMALLOC(size) grammar.heap.halloc_any(size, alignof(std::max_align_t))
#define YYFREE(block) static_cast<void>(block)

static int yylex(YYSTYPE* value, qvox::Grammar& grammar) {
    const int readByPieces = grammar.content.read();
    if (readByPieces != qvox::Content::NOTHING) return readByPieces;
    const int token = grammar.lexer.next_token();
    value->token = grammar.lexer.tokenValue;
    return token;
}

// Bison calls this for one thing: a stack that has reached its limit.
static void yyerror(qvox::Grammar& grammar, const char*) {
    grammar.lexer.scanner_errors().syntax_error("parser stack overflow");
}
}

/* Tokens. Single characters have their code. */

%token        S 257 "white space"
%token <token.text> IGNORABLE_WS 258 "ignorable white space"
%token <token.name> NAME 259
%token <token.text> NMTOKEN 260
%token <token.text> ENTITY_VALUE 261
%token <token.value> ATT_VALUE 262
%token <token.text> SYSTEM_LITERAL 263
%token <token.text> PUBID_LITERAL 264
%token <token.text> CHARDATA 265
%token        COMMENT_START 266
%token        COMMENT_END 267
%token <token.text> COMMENT_TEXT 268
%token        PI_START 269
%token        PI_END 270
%token        XML_DECL_START 271
%token <token.text> PI_TARGET 272
%token <token.text> PI_DATA 273
%token        CDATA_START 274
%token        CDATA_END 275
%token <token.text> CDATA_TEXT 276
%token        KW_VERSION 277
%token <token.text> VERSION_NUM 278
%token        DOCTYPE_START 279
%token        KW_STANDALONE 280
%token <token.text> STANDALONE_YES 281
%token <token.text> STANDALONE_NO 282
%token        STAG_OPEN 287
%token        TAG_CLOSE 288
%token        ETAG_OPEN 289
%token        EMPTY_TAG_CLOSE 290
%token        ELEMENT_DECL_START 291
%token <token.text> KW_EMPTY 292
%token <token.text> KW_ANY 293
%token <token.text> KW_PCDATA 294
%token        ATTLIST_DECL_START 295
%token <token.text> KW_CDATA 296
%token <token.text> KW_ID 297
%token <token.text> KW_IDREF 298
%token <token.text> KW_IDREFS 299
%token <token.text> KW_ENTITY 300
%token <token.text> KW_ENTITIES 301
%token <token.text> KW_NMTOKEN 302
%token <token.text> KW_NMTOKENS 303
%token <token.text> KW_NOTATION 304
%token <token.text> KW_REQUIRED 305
%token <token.text> KW_IMPLIED 306
%token <token.text> KW_FIXED 307
%token        COND_START 308
%token        COND_END 309
%token        KW_INCLUDE 310
%token        KW_IGNORE 311
%token        IGNORE_TEXT 312
%token        ENTITY_DECL_START 313
%token        KW_SYSTEM 314
%token        KW_PUBLIC 315
%token        KW_NDATA 316
%token        KW_ENCODING 317
%token <token.text> ENC_NAME 318
%token        NOTATION_DECL_START 319
%token        EXT_SUBSET_START 320
%token        EXT_SUBSET_END 321
%token        NO_TOKEN 322 "no token"

/* Elements that were opened and closed on the straight way through content. */

%token        ELEMENT_OPENED 323
%token        ELEMENT_CLOSED 324

%type <token.name> Name
%type <token.value> AttValue
%type <token.text> Nmtoken EntityValue SystemLiteral PubidLiteral PITarget
%type <token.text> VersionInfo VersionNum SDDecl EncodingDecl EncName
%type <token.text> contentspec AttType StringType TokenizedType NDataDecl PublicID
%type <pieces> Mixed children choice seq group cp cpBody choiceList seqList NameList
%type <pieces> OccurrenceOpt Occurrence EnumeratedType NotationType Enumeration NmtokenList
%type <externalId> ExternalID
%type <defaultDecl> DefaultDecl
%type <parameterEntity> PEDef

%start document

%%

/* The document. */

docBegin
    : %empty { grammar.events.ev_start_document(); }
    ;

document
    : docBegin documentBody { grammar.events.ev_end_document(); }
    ;

documentBody
    : prolog element MiscList
    ;

/* Tokens with a text. */

Name          : NAME;
Nmtoken       : NMTOKEN;
EntityValue   : ENTITY_VALUE;
AttValue      : ATT_VALUE;
SystemLiteral : SYSTEM_LITERAL;
PubidLiteral  : PUBID_LITERAL;

/* Text, comments, processing instructions, CDATA sections. */

CharData
    : CHARDATA { grammar.events.ev_characters(qvox::EventText($1)); }
    ;

Comment
    : COMMENT_START COMMENT_TEXT COMMENT_END { grammar.events.ev_comment(qvox::EventText($2)); }
    ;

PI
    : PI_START PITarget PI_END { grammar.events.ev_pi(qvox::EventText($2), qvox::EventText(nullptr)); }
    | PI_START PITarget S PI_DATA PI_END { grammar.events.ev_pi(qvox::EventText($2), qvox::EventText($4)); }
    ;

PITarget : PI_TARGET;

CDSect
    : CDStart CData CDEnd
    ;

CDStart
    : CDATA_START { grammar.events.ev_start_cdata(); }
    ;

CData
    : CDATA_TEXT { grammar.events.ev_characters(qvox::EventText($1)); }
    ;

CDEnd
    : CDATA_END { grammar.events.ev_end_cdata(); }
    ;

/* The prolog. */

prolog
    : XMLDeclOpt MiscList doctypeOpt
    ;

XMLDeclOpt
    : %empty
    | XMLDecl
    ;

MiscList
    : %empty
    | MiscList Misc
    ;

doctypeOpt
    : %empty
    | doctypedecl MiscList
    ;

XMLDecl
    : XML_DECL_START VersionInfo Sopt PI_END { grammar.events.ev_xml_decl($2, nullptr, nullptr); }
    | XML_DECL_START VersionInfo EncodingDecl Sopt PI_END { grammar.events.ev_xml_decl($2, $3, nullptr); }
    | XML_DECL_START VersionInfo SDDecl Sopt PI_END { grammar.events.ev_xml_decl($2, nullptr, $3); }
    | XML_DECL_START VersionInfo EncodingDecl SDDecl Sopt PI_END { grammar.events.ev_xml_decl($2, $3, $4); }
    ;

Sopt
    : %empty
    | S
    ;

VersionInfo
    : S KW_VERSION Eq VersionNum { $$ = $4; }
    ;

Eq
    : Sopt '=' Sopt
    ;

VersionNum : VERSION_NUM;

Misc
    : Comment
    | PI
    | S
    ;

/* The document type declaration. The external subset is read behind the '>'. */

doctypedecl
    : DOCTYPE_START S Name Sopt
      { grammar.events.ev_start_dtd($3->units(), nullptr, nullptr); }
      internalSubsetOpt TAG_CLOSE
      { grammar.events.ev_end_dtd(); }
    | DOCTYPE_START S Name S ExternalID Sopt
      { grammar.events.ev_start_dtd($3->units(), $5->publicId, $5->systemId); }
      internalSubsetOpt TAG_CLOSE
      { grammar.lexer.load_external_subset($5->systemId); }
      extSubsetOpt
      { grammar.events.ev_end_dtd(); }
    ;

internalSubsetOpt
    : %empty
    | '[' internalSubsetBegin internalSubset ']' Sopt
    ;

internalSubsetBegin
    : %empty
    ;

internalSubset
    : %empty
    | internalSubset internalSubsetItem
    ;

internalSubsetItem
    : markupdecl
    | S
    ;

markupdecl
    : elementdecl
    | AttlistDecl
    | EntityDecl
    | NotationDecl
    | PI
    | Comment
    ;

extSubsetOpt
    : %empty
    | extSubset
    ;

extSubset
    : EXT_SUBSET_START TextDeclOpt extSubsetDecl EXT_SUBSET_END
    ;

TextDeclOpt
    : %empty
    | TextDecl
    ;

extSubsetDecl
    : extSubsetDeclList
    ;

extSubsetDeclList
    : %empty
    | extSubsetDeclList extSubsetItem
    ;

extSubsetItem
    : markupdecl
    | conditionalSect
    | S
    ;

SDDecl
    : S KW_STANDALONE Eq STANDALONE_YES { $$ = $4; }
    | S KW_STANDALONE Eq STANDALONE_NO { $$ = $4; }
    ;

/* Elements. */

element
    : EmptyElemTag
    | STag content ETag
    ;

STag
    : STAG_OPEN Name AttributeList Sopt TAG_CLOSE { grammar.elements.start_element(*$2); }
    | ELEMENT_OPENED
    ;

AttributeList
    : %empty
    | AttributeList S Attribute
    ;

Attribute
    : Name Eq AttValue { grammar.elements.add_attribute(*$1, $3); }
    ;

ETag
    : ETAG_OPEN Name Sopt TAG_CLOSE { grammar.elements.end_element(*$2); }
    | ELEMENT_CLOSED
    ;

content
    : contentList
    ;

contentList
    : %empty
    | contentList contentItem
    ;

contentItem
    : element
    | CharData
    | CDSect
    | PI
    | Comment
    | IGNORABLE_WS { grammar.events.ev_ignorable_whitespace($1); }
    | TextDecl
    ;

EmptyElemTag
    : STAG_OPEN Name AttributeList Sopt EMPTY_TAG_CLOSE
      {
          grammar.elements.start_element(*$2);
          grammar.elements.end_element(*$2);
      }
    ;

/* Element type declarations. White space inside a model doesn't belong to its text. */

elementdecl
    : ELEMENT_DECL_START S Name S contentspec Sopt TAG_CLOSE
      { grammar.declare_element(*$3, $5); }
    ;

contentspec
    : KW_EMPTY
    | KW_ANY
    | Mixed { $$ = grammar.values.flatten($1); }
    | children { $$ = grammar.values.flatten($1); }
    ;

children
    : choice OccurrenceOpt { $$ = grammar.values.join({$1, $2}); }
    | seq OccurrenceOpt { $$ = grammar.values.join({$1, $2}); }
    | group OccurrenceOpt { $$ = grammar.values.join({$1, $2}); }
    ;

OccurrenceOpt
    : %empty { $$ = nullptr; }
    | Occurrence
    ;

Occurrence
    : '?' { $$ = grammar.values.join({'?'}); }
    | '*' { $$ = grammar.values.join({'*'}); }
    | '+' { $$ = grammar.values.join({'+'}); }
    ;

cp
    : cpBody OccurrenceOpt { $$ = grammar.values.join({$1, $2}); }
    ;

cpBody
    : Name { $$ = grammar.values.join({$1->units()}); }
    | group
    | choice
    | seq
    ;

group
    : '(' Sopt cp Sopt ')' { $$ = grammar.values.join({'(', $3, ')'}); }
    ;

choice
    : '(' Sopt cp Sopt '|' Sopt choiceList Sopt ')'
      { $$ = grammar.values.join({'(', $3, '|', $7, ')'}); }
    ;

choiceList
    : cp
    | choiceList Sopt '|' Sopt cp { $$ = grammar.values.join({$1, '|', $5}); }
    ;

seq
    : '(' Sopt cp Sopt ',' Sopt seqList Sopt ')'
      { $$ = grammar.values.join({'(', $3, ',', $7, ')'}); }
    ;

seqList
    : cp
    | seqList Sopt ',' Sopt cp { $$ = grammar.values.join({$1, ',', $5}); }
    ;

Mixed
    : '(' Sopt KW_PCDATA Sopt ')' '*'
      { $$ = grammar.values.join({'(', $3, ')', '*'}); }
    | '(' Sopt KW_PCDATA Sopt '|' Sopt NameList Sopt ')' '*'
      { $$ = grammar.values.join({'(', $3, '|', $7, ')', '*'}); }
    | '(' Sopt KW_PCDATA Sopt ')'
      { $$ = grammar.values.join({'(', $3, ')'}); }
    ;

NameList
    : Name { $$ = grammar.values.join({$1->units()}); }
    | NameList Sopt '|' Sopt Name { $$ = grammar.values.join({$1, '|', $5->units()}); }
    ;

/* Attribute-list declarations. */

AttlistDecl
    : ATTLIST_DECL_START Sopt Name
      { $<element>$ = grammar.dtd.begin_attlist(*$3); }
      AttDefList Sopt TAG_CLOSE
      { grammar.events.ev_attlist_decl(*$3, *$<element>4); }
    ;

AttDefList
    : %empty
    | AttDefList AttDef
    ;

AttDef
    : S Name S AttType S DefaultDecl { grammar.dtd.add_att_def(*$2, $4, $6->mode, $6->value); }
    ;

AttType
    : StringType
    | TokenizedType
    | EnumeratedType { $$ = grammar.values.flatten($1); }
    ;

StringType : KW_CDATA;

TokenizedType
    : KW_ID
    | KW_IDREF
    | KW_IDREFS
    | KW_ENTITY
    | KW_ENTITIES
    | KW_NMTOKEN
    | KW_NMTOKENS
    ;

EnumeratedType
    : NotationType
    | Enumeration
    ;

NotationType
    : KW_NOTATION S '(' Sopt NameList Sopt ')'
      { $$ = grammar.values.join({$1, ' ', '(', $5, ')'}); }
    ;

Enumeration
    : '(' Sopt NmtokenList Sopt ')' { $$ = grammar.values.join({'(', $3, ')'}); }
    ;

NmtokenList
    : Nmtoken { $$ = grammar.values.join({$1}); }
    | NmtokenList Sopt '|' Sopt Nmtoken { $$ = grammar.values.join({$1, '|', $5}); }
    ;

DefaultDecl
    : KW_REQUIRED { $$ = grammar.values.default_decl($1, nullptr); }
    | KW_IMPLIED { $$ = grammar.values.default_decl($1, nullptr); }
    | AttValue { $$ = grammar.values.default_decl(nullptr, $1); }
    | KW_FIXED S AttValue { $$ = grammar.values.default_decl($1, $3); }
    ;

/* Conditional sections. The lexer's states of a subset never open one. */

conditionalSect
    : includeSect
    | ignoreSect
    ;

includeSect
    : COND_START Sopt KW_INCLUDE Sopt '[' extSubsetDecl COND_END
    ;

ignoreSect
    : COND_START Sopt KW_IGNORE Sopt '[' ignoreSectContents COND_END
    ;

ignoreSectContents
    : %empty
    | ignoreSectContents Ignore
    ;

Ignore
    : IGNORE_TEXT
    ;

/* Entity declarations. */

EntityDecl
    : GEDecl
    | PEDecl
    ;

GEDecl
    : ENTITY_DECL_START S Name S EntityValue Sopt TAG_CLOSE { grammar.declare_internal_entity($3->units(), $5); }
    | ENTITY_DECL_START S Name S ExternalID Sopt TAG_CLOSE
      { grammar.declare_external_entity($3->units(), *$5, nullptr); }
    | ENTITY_DECL_START S Name S ExternalID NDataDecl Sopt TAG_CLOSE
      { grammar.declare_external_entity($3->units(), *$5, $6); }
    ;

PEDecl
    : ENTITY_DECL_START S '%' S Name S PEDef Sopt TAG_CLOSE { grammar.declare_parameter_entity($5->units(), *$7); }
    ;

PEDef
    : EntityValue { $$ = grammar.values.parameter_entity_def($1, nullptr); }
    | ExternalID { $$ = grammar.values.parameter_entity_def(nullptr, $1); }
    ;

ExternalID
    : KW_SYSTEM S SystemLiteral { $$ = grammar.values.external_id(nullptr, $3); }
    | PublicID S SystemLiteral { $$ = grammar.values.external_id($1, $3); }
    ;

NDataDecl
    : S KW_NDATA S Name { $$ = $4->units(); }
    ;

/* Text declarations and encodings. */

TextDecl
    : XML_DECL_START VersionInfo EncodingDecl Sopt PI_END
    | XML_DECL_START EncodingDecl Sopt PI_END
    ;

EncodingDecl
    : S KW_ENCODING Eq EncName { $$ = $4; }
    ;

EncName : ENC_NAME;

/* Notation declarations. */

NotationDecl
    : NOTATION_DECL_START S Name S ExternalID Sopt TAG_CLOSE
      { grammar.events.ev_notation_decl($3->units(), $5->publicId, $5->systemId); }
    | NOTATION_DECL_START S Name S PublicID Sopt TAG_CLOSE { grammar.events.ev_notation_decl($3->units(), $5, nullptr); }
    ;

PublicID
    : KW_PUBLIC S PubidLiteral { $$ = $3; }
    ;

%%

static int yyreport_syntax_error(const yypcontext_t*, qvox::Grammar& grammar) {
    grammar.lexer.scanner_errors().syntax_error("parse error");
}

void qvox::Grammar::grammar_run() { grammar_parse(*this); }
