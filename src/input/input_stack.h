// The stack of open inputs between the sources of characters and the lexer: the document at the
// bottom, above it the external subset, replacement texts and external entities while they are
// read. The lexer only calls curGetc; a level that is exhausted ends inside that call, so that the
// end of an entity is invisible to it. Only the end of the bottom level yields -1.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "input/decoders.h"
#include "platform/byte_stream.h"
#include "text/encoding_id.h"
#include "text/wide.h"

namespace qvox {

enum InputKind : int {
    INPUT_DOCUMENT = 0,         // the document's file
    INPUT_EXTERNAL_SUBSET = 1,  // the file of the external subset
    INPUT_ENTITY_TEXT = 2,      // replacement text of an internal entity
    INPUT_EXTERNAL_ENTITY = 3,  // the file of an external entity
    INPUT_MEMORY = 4            // the document as the caller's string
};

// The byte order of a file in UTF-16. (The C library has macros with the plain names.)
enum ByteOrder : int { NO_BYTE_ORDER = 0, BYTES_BIG_ENDIAN = 1, BYTES_LITTLE_ENDIAN = 2 };

struct InputLevel {
    InputKind kind = INPUT_DOCUMENT;
    const Unit* name = nullptr;           // the entity's name on the parse heap, with a leading "%"
                                          // for a parameter entity; null for the other kinds
    const Unit* text = nullptr;           // read position in a replacement text, which isn't owned
    ByteStream* file = nullptr;           // the file of a file level
    std::unique_ptr<ByteStream> owned;    // that file again, where the level has to close it
    int savedLine = 0;                    // curLine when another level was pushed on this one
    EncodingId encoding = UTF8;           // of a file level; a declaration changes it
    ByteOrder byteOrder = NO_BYTE_ORDER;  // of a file level
    const Unit* memory = nullptr;         // read position in the caller's string
    bool isRepeated = false;              // an external entity that was read before in this parse
    ByteStream* fileBelow = nullptr;      // curFile when this file level was pushed
    DecoderState decoderBelow;            // state of the decoders when this file level was pushed
    bool hasHeldChar = false;             // a character waits here for the level to become current
    int heldChar = -1;
};

// The working values of the current level. They live for one parse, under the parse lock, and are
// written by the readers and by pushes and pops.
extern int curChar;       // the one character of look-ahead, -1 at the end; the lexer's to write
extern int (*curGetc)();  // reader of the top level: the next character or -1
// The same by runs: stores plain characters that lie ready, at most `room`, and returns how many.
extern std::size_t (*curGetRun)(Unit* to, std::size_t room, const RunStops& stops);
extern ByteStream* curFile;  // file of the nearest file level
extern int curLine;          // line number, from 1 in each file and memory level
extern int curCol;           // column in display cells; stands before the first character at 1
extern int tokenCol;         // curCol when the current token began; the lexer's to write
extern EncodingId
    docEncoding;             // encoding of the file level being read; a declaration writes it too
extern ByteOrder byteOrder;  // its byte order
extern std::string docName;  // name of the document in messages

extern std::vector<InputLevel> inputStack;

// Opens the bottom level: the document in `file`, or else in the caller's string `memory`. `name`,
// which may be null for a document in memory, is for messages. Reads the first character. Neither
// is taken over.
void open_input(const char* name, ByteStream* file, const Unit* memory);

// Drops all levels, closes their files and forgets the position.
void close_input();

// Opens a file by its system identifier: a leading "file:" is removed, the rest is a file name
// relative to the working directory. Null if that fails.
std::unique_ptr<ByteStream> open_system_id(const char* path);

// Push a level above the present ones and make it current. Each keeps the place of the level below.
// `isRepeated` tells that the entity was read before in this parse. The external subset also takes
// curChar over for the level below and reads its own first character.
void push_entity_text(const Unit* name, const Unit* text);
void push_external_entity(const Unit* name, std::unique_ptr<ByteStream> file, bool isRepeated);
void push_external_subset(std::unique_ptr<ByteStream> file);

// Ends the top level and goes on in the one below: the next character there, or -1 behind the
// bottom level.
int pop_input();

// The encoding of the current file level becomes `encoding`, from the next byte on. A text in
// memory, be it the document or an entity's, has none to change.
void switch_encoding(EncodingId encoding);

// Whether the document is a string in memory.
bool reading_memory();

// Bytes read from a file level, units from a string in memory; 0 for what only repeats.
unsigned long long amount_read_of(const InputLevel& level);

}  // namespace qvox
