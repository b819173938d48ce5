// The stack of open inputs: what a push keeps of the level below and a pop brings back.
#include "input/input_stack.h"

#include <csignal>

#include <gtest/gtest.h>

#include "input/parse_state.h"
#include "scanner/external_subset.h"

namespace qvox_test {
namespace {

using namespace qvox;

class InputStackTest : public testing::Test, public ParseState {
protected:
    // The next characters, each with line and column: "a1:2". The end is "$".
    static std::string read(int count) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            const int c = curGetc();
            text += c == '\n' ? "\\n" : c == -1 ? "$" : std::string(1, static_cast<char>(c));
            text += std::to_string(curLine) + ':' + std::to_string(curCol) + ' ';
        }
        return text;
    }
};

TEST_F(InputStackTest, Memory) {
    open_input(nullptr, nullptr, units(u"a\r\n\u3042\u0101b"));
    EXPECT_EQ(docName, "(memory)");
    EXPECT_EQ(curChar, 'a');
    EXPECT_EQ(read(3), "\r1:3 \\n2:0 B2:2 ");
    // It never loads a subset, and its end stays the end.
    write_file("s.dtd", "<!---->");
    const std::string output = output_of([] {
        load_external_subset(nullptr, units(u"s.dtd"));
        load_external_subset(units(u"p"), units(u"none.dtd"));
    });
    EXPECT_EQ(output + recorder.events, "");
    EXPECT_EQ(read(4).substr(5), "b2:5 $2:5 $2:5 ");
}

TEST_F(InputStackTest, EntityTextsCountNothingAndEndUnseen) {
    open("1\n2345");
    read(1);
    push_entity_text(units(u"%p"), units(u"x\ny"));
    EXPECT_EQ(read(2), "x2:0 \\n2:0 ");
    push_entity_text(units(u"q"), units(u""));
    push_entity_text(units(u"r"), units(u"\u3042"));
    EXPECT_EQ(read(3), "B2:0 y2:0 22:1 ");  // r, q and p have ended
    push_entity_text(units(u"q"), units(u""));
    EXPECT_EQ(read(4), "32:2 42:3 52:4 $2:4 ");
    EXPECT_EQ(joined(recorder.events),
              "startEntity '%p'; startEntity 'q'; startEntity 'r'; endEntity 'r'; endEntity 'q'; "
              "endEntity '%p'; startEntity 'q'; endEntity 'q'");
}

TEST_F(InputStackTest, FilesHaveLinesAndEncodingsOfTheirOwn) {
    open("\n\nab");
    read(1);
    switch_encoding(EUC);
    push_external_entity(units(u"e"), stream_of(std::string("\xFF\xFE<\0\n\0b\0", 8)), false);
    EXPECT_EQ(docEncoding, UTF16);
    EXPECT_EQ(byteOrder, BYTES_LITTLE_ENDIAN);
    EXPECT_EQ(read(2), "<1:1 \\n2:0 ");
    push_external_entity(units(u"f"), stream_of("<c/>"), false);
    EXPECT_EQ(docEncoding, UTF8);
    switch_encoding(SJIS);
    EXPECT_EQ(read(5), "<1:1 c1:2 /1:3 >1:4 b2:5 ");
    EXPECT_EQ(docEncoding, UTF16);
    EXPECT_EQ(read(1), "a3:6 ");
    EXPECT_EQ(docEncoding, EUC);
    EXPECT_EQ(curFile, document.get());
}

TEST_F(InputStackTest, CharacterInHandWaitsBelowTheSubset) {
    open(">\xE3\x81\x82z");
    read_char();
    push_external_subset(stream_of("abc\n"));
    EXPECT_EQ(curChar, 'a');
    EXPECT_EQ(read(3), "b1:6 c1:7 \\n2:0 ");
    EXPECT_EQ(curGetc(), 0x3042);
    EXPECT_EQ(read(2), "z1:1 $1:1 ");
    EXPECT_EQ(next_token(), EXT_SUBSET_START);  // the token for the end has waited for this one
    EXPECT_EQ(next_token(), EXT_SUBSET_END);
    EXPECT_EQ(joined(recorder.events), "startEntity '[dtd]'; endEntity '[dtd]'");
}

TEST_F(InputStackTest, Limits) {
    open("<r/>");
    for (int i = 0; i < 1023; ++i) push_entity_text(units(u"e"), units(u"x"));
    const Outcome outcome = observe([] { push_entity_text(units(u"e"), units(u"x")); });
    EXPECT_EQ(std::to_string(outcome.code) + ' ' + outcome.message, "9 input stack overflow");
    for (int i = 0; i < 1023; ++i) EXPECT_EQ(curGetc(), 'x');
    EXPECT_EQ(read(4), "r1:3 /1:4 >1:5 $1:5 ");
    EXPECT_EXIT(pop_input(), testing::KilledBySignal(SIGABRT), "");
}

}  // namespace
}  // namespace qvox_test
