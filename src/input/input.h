// The input of a parse: a stack of levels between the sources of characters and the lexer. The
// lexer only asks for the next character; a level that is exhausted ends inside that call, so that
// the end of an entity is invisible to it. Only the end of the bottom level yields END_OF_INPUT.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "input/cursor.h"
#include "input/decoders.h"
#include "input/expansion.h"
#include "input/input_level.h"
#include "input/level_events.h"
#include "input/run_stops.h"
#include "input/window.h"
#include "platform/byte_stream.h"
#include "text/encoding_id.h"
#include "text/wide.h"

namespace qvox {

inline constexpr int END_OF_INPUT = -1;

// Opens a file by its system identifier: a leading "file:" is removed, the rest is a file name
// relative to the working directory. Null if that fails.
std::unique_ptr<ByteStream> open_system_id(const char* path);

// The same for what a document names: regular files only.
std::unique_ptr<ByteStream> open_external_id(const char* path);

class Input final : private Expansion::OpenLevels {
public:
    // Without levels yet. `levelEvents` has to outlive the input.
    explicit Input(LevelEvents& levelEvents);
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    // Opens the bottom level: the document in `file`, or else in the caller's string `memory`.
    // `name`, which may be null for a document in memory, is for messages. Reads the first
    // character. Neither is taken over.
    void open_input(const char* name, ByteStream* file, const Unit* memory);

    // The next character, or END_OF_INPUT.
    int curGetc() { return window.next != window.end ? *window.next++ : read_beyond_window(); }
    // The same by runs: stores plain characters that lie ready, at most `room`, and returns how
    // many.
    std::size_t curGetRun(Unit* to, std::size_t room, const RunStops& stops);

    // The one character of look-ahead; the lexer's to write.
    int curChar = END_OF_INPUT;
    void read_char() { curChar = curGetc(); }

    // A token begins with the character in hand.
    void begin_token() {
        window.mark = window.next;
        cursor.tokenCol = cursor.curCol;
    }

    // The place, as messages show it: the line, from 1 in each file and memory level, the column in
    // display cells, and that in which the current token began.
    int curLine() { return counted().curLine; }
    int curCol() { return counted().curCol; }
    int tokenCol() { return counted().tokenCol; }

    // What lies ready of the current level, from the character in hand to windowEnd(); null where
    // that isn't to be had in one piece. The units may be written to behind those that were taken,
    // if they are put back before they are read.
    Unit* windowChar() const {
        return window.has_last() && window.next[-1] == curChar ? windowStart() : nullptr;
    }
    // The same where it is known to be there.
    Unit* windowStart() const { return window.next - 1; }
    const Unit* windowEnd() const { return window.end; }
    // Decodes more behind windowEnd(); false where that can't be. The units move.
    bool extend_window() { return window.more(cursor, window.next - 1) != 0; }
    // Takes units of the window, so that the one in front of `next` is the character in hand.
    void take_up_to(Unit* next) {
        window.next = next;
        curChar = next[-1];
    }
    // Where the token began whose events are raised: behind its first character.
    void set_token(const Unit* behindFirst) { window.mark = behindFirst; }
    // Name of the document in messages.
    const char* docName() const { return nameOfDocument.c_str(); }

    // Push a level above the present ones and make it current. Each keeps the place of the level
    // below. The name and the text have to last as long as the parse. `isRepeated` tells that the
    // entity was read before in this parse. The external subset also takes curChar over for the
    // level below and reads its own first character.
    void push_entity_text(const Unit* name, const Unit* text);
    void push_external_entity(const Unit* name, std::unique_ptr<ByteStream> file, bool isRepeated);
    void push_external_subset(std::unique_ptr<ByteStream> file);

    // Encoding of the file level being read.
    EncodingId docEncoding() const { return encoding; }
    // It becomes `declared`, from the next byte on. A text in memory, be it the document or an
    // entity's, is read as before.
    void switch_encoding(EncodingId declared);

    // Whether the document is a string in memory.
    bool reading_memory() const { return memoryStart != nullptr; }

    // What multiplies is counted here.
    Expansion expansion;

private:
    Amount amount_read() const override;
    Amount amount_read_of(const InputLevel& level) const;

    void start_level(InputLevel& level, const Unit* name);
    void start_file(InputLevel& level, ByteStream* file);
    void save_level();
    void resume_level(InputLevel& level);
    void tell_end(const InputLevel& ended);
    void count_level(const InputLevel& ended);
    int next_character(InputLevel& level);
    int getc();
    int read_beyond_window();
    const Cursor& counted();
    WindowReader file_window_reader() const;
    int pop_input();
    void end_level();

    LevelEvents& events;
    std::vector<InputLevel> inputStack;
    Window window;  // of the current level
    Cursor cursor;
    Decoder reader;
    EncodingId encoding = UTF8;
    std::size_t windowSize;
    std::string nameOfDocument;
    const Unit* memoryStart = nullptr;  // first unit of a document in memory
};

}  // namespace qvox
