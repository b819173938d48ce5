// The document type declaration and its external subset.
#include "parser/tables.h"
#include "support/encode.h"

namespace qvox_test {
namespace {

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
