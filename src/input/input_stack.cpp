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
int (*curGetc)() = nullptr;
std::size_t (*curGetRun)(Unit*, std::size_t, const RunStops&) = nullptr;
ByteStream* curFile = nullptr;
int curLine = 0;
int curCol = 0;
int tokenCol = 0;
EncodingId docEncoding = UTF8;
ByteOrder byteOrder = NO_BYTE_ORDER;
std::string docName;
std::vector<InputLevel> inputStack;

namespace {

constexpr std::size_t DEEPEST_STACK = 1024;
constexpr Unit SUBSET_NAME[] = {'[', 'd', 't', 'd', ']', 0};
constexpr char MEMORY_NAME[] = "(memory)";
constexpr char FILE_PREFIX[] = "file:";

bool memoryDocument = false;        // the bottom level is or was a string in memory
const Unit* memoryStart = nullptr;  // its first unit

// The reader behind the end of the bottom level.
int getc_nothing() { return -1; }

std::size_t get_run_nothing(Unit* /*to*/, std::size_t /*room*/, const RunStops& /*stops*/) {
    return 0;
}

int getc_entity() {
    InputLevel& level = inputStack.back();
    const Unit unit = *level.text;
    if (unit == 0) return pop_input();
    ++level.text;
    count_expanded(1);
    return unit;
}

bool ends_run(Unit unit, const RunStops& stops) {
    return unit < 0x80 ? stops.ascii[unit] : stops.wide;
}

// The plain units at `from`, which a NUL ends.
std::size_t copy_run(const Unit* from, Unit* to, std::size_t room, const RunStops& stops) {
    std::size_t count = 0;
    while (count < room && !ends_run(from[count], stops)) {
        to[count] = from[count];
        ++count;
    }
    return count;
}

std::size_t get_run_entity(Unit* to, std::size_t room, const RunStops& stops) {
    InputLevel& level = inputStack.back();
    const std::size_t count = copy_run(level.text, to, room, stops);
    level.text += count;
    count_expanded(count);
    return count;
}

std::size_t get_run_memory(Unit* to, std::size_t room, const RunStops& stops) {
    InputLevel& level = inputStack.back();
    const std::size_t count = copy_run(level.memory, to, room, stops);
    level.memory += count;
    for (std::size_t i = 0; i < count; ++i) curCol += to[i] > 0xFF ? 2 : 1;
    return count;
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

constexpr Reader NOTHING_READER = {getc_nothing, get_run_nothing};
constexpr Reader ENTITY_READER = {getc_entity, get_run_entity};
constexpr Reader MEMORY_READER = {getc_memory, get_run_memory};

void use_reader(const Reader& reader) {
    curGetc = reader.getc;
    curGetRun = reader.getRun;
}

bool reads_file(InputKind kind) { return kind != INPUT_ENTITY_TEXT && kind != INPUT_MEMORY; }

// A replacement text has no lines of its own: the line goes on from the level below it.
bool counts_lines(InputKind kind) { return kind != INPUT_ENTITY_TEXT; }

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
    level.fileBelow = std::exchange(curFile, file);
    use_reader(select_getc_proc(docEncoding));
    curLine = 1;
}

// Makes the level that has come to the top current again.
void resume_level(const InputLevel& level) {
    if (level.kind == INPUT_ENTITY_TEXT) {
        use_reader(ENTITY_READER);
        return;
    }
    curLine = level.savedLine;
    if (level.kind == INPUT_MEMORY) {
        use_reader(MEMORY_READER);
        return;
    }
    docEncoding = level.encoding;
    byteOrder = level.byteOrder;
    use_reader(select_getc_proc(docEncoding));
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
        use_reader(MEMORY_READER);
    } else {
        start_file(level, file);
    }
    inputStack.push_back(std::move(level));
    curChar = curGetc();
}

void close_input() {
    inputStack.clear();
    inputStack.shrink_to_fit();
    use_reader(NOTHING_READER);
    curFile = nullptr;
    std::string().swap(docName);
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
    use_reader(ENTITY_READER);
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
    if (reads_file(ended.kind)) {
        decoderState = ended.decoderBelow;
        curFile = ended.fileBelow;
    }
    ended.owned.reset();
    if (inputStack.empty()) {
        use_reader(NOTHING_READER);
        return -1;
    }
    resume_level(inputStack.back());
    tell_end(ended);
    return next_character(inputStack.back());
}

void switch_encoding(EncodingId encoding) {
    if (!reads_file(inputStack.back().kind)) return;
    docEncoding = encoding;
    inputStack.back().encoding = encoding;
    use_reader(select_getc_proc(encoding));
}

bool reading_memory() { return memoryDocument; }

unsigned long long amount_read_of(const InputLevel& level) {
    if (level.kind == INPUT_MEMORY) {
        return static_cast<unsigned long long>(level.memory - memoryStart);
    }
    return level.file != nullptr && !level.isRepeated ? level.file->position() : 0;
}

}  // namespace qvox
