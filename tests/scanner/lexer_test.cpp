// The tokens of conditional sections, of which the grammar lets none through.
#include "scanner/lexer.h"

#include <map>

#include "input/input_stack.h"
#include "parser/parse_run.h"
#include "parser/tables.h"
#include "runtime/heap.h"

namespace qvox_test {
namespace {

using namespace qvox;

// What a running parse has before its first token.
struct ParseState {
    ParseState() {
        currentParser = &parser;
        parseHeap = heap_create();
        lexer_start();
    }
    ParseState(const ParseState&) = delete;
    ParseState& operator=(const ParseState&) = delete;
    ~ParseState() {
        lexer_end(false);
        close_input();
        heap_destroy(std::exchange(parseHeap, nullptr));
        currentParser = nullptr;
    }
    SAXParser parser;
};

// All tokens up to the end, or up to NO_TOKEN and the text in which it was found.
std::string tokens_of(const std::string& bytes) {
    const ParseState state;
    write_file("doc.xml", bytes);
    const auto document = ByteStream::open("doc.xml");
    open_input("doc.xml", document.get(), nullptr);
    std::map<int, std::string> names = {
        {'[', "["},           {COND_START, "<!["}, {COND_END, "]]>"},    {257, "S"},
        {KW_INCLUDE, "INCL"}, {KW_IGNORE, "IGN"},  {IGNORE_TEXT, "TEXT"}};
    std::string tokens;
    for (int token = 0; (token = next_token()) != 0;) {
        if (token == NO_TOKEN) return tokens + quoted(terminated_token());
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
