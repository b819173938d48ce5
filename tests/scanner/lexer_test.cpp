// The tokens of conditional sections, of which the grammar lets none through.
#include "scanner/lexer.h"

#include <map>

#include "parser/sax_delivery.h"
#include "parser/tables.h"

namespace qvox_test {
namespace {

using namespace qvox;

struct NoEvents : LevelEvents {
    void ev_start_entity(const Unit*) override {}
    void ev_end_entity(const Unit*) override {}
    void subset_level_started() override {}
    void subset_level_ended() override {}
};

// All tokens up to the end, or up to NO_TOKEN and the text in which it was found.
std::string tokens_of(const std::string& bytes) {
    write_file("doc.xml", bytes);
    const auto document = ByteStream::open("doc.xml");
    NoEvents events;
    Heap heap;
    Input input(events);
    Names kept(heap);
    Declarations dtd(heap, input.expansion, kept);
    SAXParser parser;
    SaxDelivery unheard(parser);
    Elements elements(heap, unheard, input.expansion, kept, {true, false});
    Lexer lexer(heap, input, kept, dtd, elements, true);
    input.open_input("doc.xml", document.get(), nullptr);
    std::map<int, std::string> names = {
        {'[', "["},           {COND_START, "<!["}, {COND_END, "]]>"},    {257, "S"},
        {KW_INCLUDE, "INCL"}, {KW_IGNORE, "IGN"},  {IGNORE_TEXT, "TEXT"}};
    std::string tokens;
    for (int token = 0; (token = lexer.next_token()) != 0;) {
        if (token == NO_TOKEN) return tokens + quoted(lexer.text_in_hand().text());
        tokens += names[token] + ' ';
    }
    return tokens.substr(0, tokens.size() - 1);
}

TEST(Lexer, ConditionalSections) {
    expect_rows(R"(
<![INCLUDE[ x                => <![ INCL [ S 'x'
<![ INCLUDE [<               => <![ S INCL S [ '<'
<![ IGNORE [%<![ ]] ]]> ]>]]>\n<![IGNORE[]]> => <![ S IGN S [ TEXT ]]> S <![ IGN [ TEXT ]]>
<![INCLUDES[                 => <![ 'INCLUDES'
<![IGNORE x                  => <![ IGN S 'x'
)",
                [](const std::string& document) { return tokens_of(document); });
    const Outcome outcome = observe([] { tokens_of("<![IGNORE[<![a]]>"); });
    EXPECT_EQ(outcome.message, "unterminated ignore section : doc.xml (<![a]]>) at line 1, col 18");
}

}  // namespace
}  // namespace qvox_test
