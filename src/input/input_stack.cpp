#include "input/input_stack.h"

#include <cstring>
#include <utility>

#include "input/encoding.h"
#include "input/expansion.h"
#include "input/level_events.h"
#include "runtime/heap.h"
#include "runtime/report.h"

namespace qvox {

int curChar = -1;
Reader curGetc = nullptr;
ByteStream* curFile = nullptr;
int curLine = 0;
int curCol = 0;
int tokenCol = 0;
EncodingId docEncoding = UTF8;
ByteOrder byteOrder = NO_BYTE_ORDER;
const char* docName = "";
std::vector<InputLevel> inputStack;

namespace {

constexpr std::size_t DEEPEST_STACK = 1024;
constexpr Unit SUBSET_NAME[] = {'[', 'd', 't', 'd', ']', 0};
constexpr char MEMORY_NAME[] = "(memory)";
constexpr char FILE_PREFIX[] = "file:";

bool memoryDocument = false;        // the bottom level is or was a string in memory
const Unit* memoryStart = nullptr;  // its first unit

// The reader behind the end of the bottom level.
int getc_nothing() {
    return -1;
}

int getc_entity() {
    InputLevel& level = inputStack.back();
    const Unit unit = *level.text;
    if (unit == 0) return pop_input();
    ++level.text;
    count_expanded(1);
    return unit;
}

int getc_memory() {
    InputLevel& level = inputStack.back();
    const Unit unit = *level.memory;
    if (unit == 0) return pop_input();
    ++level.memory;
    curCol += unit > 0xFF ? 2 : 1;
    if (unit == '\n') {
        curCol = 0;
        ++curLine;
    }
    return unit;
}

bool reads_file(InputKind kind) {
    return kind != INPUT_ENTITY_TEXT && kind != INPUT_MEMORY;
}

// A replacement text has no lines of its own: the line goes on from the level below it.
bool counts_lines(InputKind kind) {
    return kind != INPUT_ENTITY_TEXT;
}

const Unit* copy_on_heap(const Unit* name) {
    return wide_copy(halloc_text(parseHeap, wide_length(name)), name);
}

// The first half of each push: the place in the level below is kept, and the event goes out.
void start_level(InputLevel& level, const Unit* name) {
    if (inputStack.size() >= DEEPEST_STACK) {
        qvox_report(REPORT_ERROR, QVOXException::INVALID_ENTITY_REF_ERR, "input stack overflow");
    }
    if (!inputStack.empty() && counts_lines(inputStack.back().kind)) {
        inputStack.back().savedLine = curLine;
    }
    if (name != nullptr) {
        level.name = copy_on_heap(name);
        ev_start_entity(level.name);
    } else if (level.kind == INPUT_EXTERNAL_SUBSET) {
        ev_start_entity(SUBSET_NAME);
    }
}

// The second half for a file: its encoding is detected and it becomes the current file.
void start_file(InputLevel& level, ByteStream* file) {
    detect_encoding(*file);
    level.file = file;
    level.encoding = docEncoding;
    level.byteOrder = byteOrder;
    level.decoderBelow = std::exchange(decoderState, DecoderState());
    curGetc = select_getc_proc(docEncoding);
    curLine = 1;
    curFile = file;
}

// Makes the level that has come to the top current again.
void resume_level(const InputLevel& level) {
    if (level.kind == INPUT_ENTITY_TEXT) {
        curGetc = getc_entity;
        return;
    }
    curLine = level.savedLine;
    if (level.kind == INPUT_MEMORY) {
        curGetc = getc_memory;
        return;
    }
    curFile = level.file;
    docEncoding = level.encoding;
    byteOrder = level.byteOrder;
    curGetc = select_getc_proc(docEncoding);
}

void tell_end(const InputLevel& ended) {
    if (ended.name != nullptr) {
        ev_end_entity(ended.name);
    } else if (ended.kind == INPUT_EXTERNAL_SUBSET) {
        ev_end_entity(SUBSET_NAME);
        subset_level_ended();
    }
}

void count_level(const InputLevel& ended) {
    if (ended.isRepeated) {
        count_expanded(ended.file->position());
    } else {
        count_read(amount_read_of(ended));
    }
}

int next_character(InputLevel& level) {
    if (!level.hasHeldChar) return curGetc();
    level.hasHeldChar = false;
    return level.heldChar;
}

}  // namespace

void open_input(const char* name, ByteStream* file, const Unit* memory) {
    curLine = 1;
    curCol = 1;
    tokenCol = 1;
    docName = name != nullptr ? name : MEMORY_NAME;
    memoryDocument = memory != nullptr;
    memoryStart = memory;
    decoderState = DecoderState();
    inputStack.clear();
    expansion_start();

    InputLevel level;
    level.kind = memoryDocument ? INPUT_MEMORY : INPUT_DOCUMENT;
    start_level(level, nullptr);
    if (memoryDocument) {
        docEncoding = UTF16;
        level.memory = memory;
        curGetc = getc_memory;
    } else {
        start_file(level, file);
    }
    inputStack.push_back(std::move(level));
    curChar = curGetc();
}

void close_input() {
    inputStack.clear();
    inputStack.shrink_to_fit();
    curGetc = getc_nothing;
    curFile = nullptr;
    docName = "";
    curLine = 0;
    tokenCol = 0;
}

std::unique_ptr<ByteStream> open_system_id(const char* path) {
    constexpr std::size_t prefixLength = sizeof FILE_PREFIX - 1;
    const bool hasPrefix = path != nullptr && std::strncmp(path, FILE_PREFIX, prefixLength) == 0;
    return ByteStream::open(hasPrefix ? path + prefixLength : path);
}

void push_entity_text(const Unit* name, const Unit* text) {
    InputLevel level;
    level.kind = INPUT_ENTITY_TEXT;
    start_level(level, name);
    level.text = text;
    curGetc = getc_entity;
    inputStack.push_back(std::move(level));
}

void push_external_entity(const Unit* name, std::unique_ptr<ByteStream> file, bool isRepeated) {
    InputLevel level;
    level.kind = INPUT_EXTERNAL_ENTITY;
    level.isRepeated = isRepeated;
    level.owned = std::move(file);
    count_expanded(OPENING_EXPANSION);
    start_level(level, name);
    start_file(level, level.owned.get());
    inputStack.push_back(std::move(level));
}

void push_external_subset(std::unique_ptr<ByteStream> file) {
    if (!inputStack.empty()) {
        inputStack.back().hasHeldChar = true;
        inputStack.back().heldChar = curChar;
    }
    InputLevel level;
    level.kind = INPUT_EXTERNAL_SUBSET;
    level.owned = std::move(file);
    start_level(level, nullptr);
    start_file(level, level.owned.get());
    subset_level_started();
    inputStack.push_back(std::move(level));
    curChar = curGetc();
}

int pop_input() {
    if (inputStack.empty()) {
        qvox_report(REPORT_FATAL, QVOXException::INTERNAL_ERR, "input stack underflow");
    }
    InputLevel ended = std::move(inputStack.back());
    inputStack.pop_back();
    count_level(ended);
    if (reads_file(ended.kind)) decoderState = ended.decoderBelow;
    ended.owned.reset();
    if (inputStack.empty()) {
        curGetc = getc_nothing;
        return -1;
    }
    resume_level(inputStack.back());
    tell_end(ended);
    return next_character(inputStack.back());
}

void switch_encoding(EncodingId encoding) {
    docEncoding = encoding;
    if (inputStack.back().kind == INPUT_MEMORY) return;
    inputStack.back().encoding = encoding;
    curGetc = select_getc_proc(encoding);
}

bool reading_memory() {
    return memoryDocument;
}

unsigned long long amount_read_of(const InputLevel& level) {
    if (level.kind == INPUT_MEMORY) {
        return static_cast<unsigned long long>(level.memory - memoryStart);
    }
    return level.file != nullptr && !level.isRepeated ? level.file->position() : 0;
}

}  // namespace qvox
