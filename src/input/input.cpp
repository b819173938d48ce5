#include "input/input.h"

#include <cstring>
#include <utility>

#include "input/encoding.h"
#include "input/file_end.h"
#include "runtime/report.h"

namespace qvox {

namespace {

constexpr std::size_t DEEPEST_STACK = 1024;
constexpr Unit SUBSET_NAME[] = {'[', 'd', 't', 'd', ']', 0};
constexpr char MEMORY_NAME[] = "(memory)";
constexpr char FILE_PREFIX[] = "file:";

// The reader behind the end of the bottom level.
int getc_nothing(Cursor& /*cursor*/) { return END_OF_INPUT; }

std::size_t get_run_nothing(Cursor& /*cursor*/, Unit* /*to*/, std::size_t /*room*/,
                            const RunStops& /*stops*/) {
    return 0;
}

bool ends_run(Unit unit, const RunStops& stops) {
    return unit < 0x80 ? stops.ascii[unit] : stops.wide;
}

// The plain units of a text, which a NUL ends.
std::size_t take_run(Cursor& cursor, Unit* to, std::size_t room, const RunStops& stops) {
    std::size_t count = 0;
    while (count < room && !ends_run(cursor.text[count], stops)) {
        to[count] = cursor.text[count];
        ++count;
    }
    cursor.text += count;
    return count;
}

int getc_entity(Cursor& cursor) {
    const Unit unit = *cursor.text;
    if (unit == 0) return LEVEL_END;
    ++cursor.text;
    cursor.expansion.count(1);
    return unit;
}

std::size_t get_run_entity(Cursor& cursor, Unit* to, std::size_t room, const RunStops& stops) {
    const std::size_t count = take_run(cursor, to, room, stops);
    cursor.expansion.count(count);
    return count;
}

constexpr int cells_of(Unit unit) { return unit > 0xFF ? 2 : 1; }

int getc_memory(Cursor& cursor) {
    const Unit unit = *cursor.text;
    if (unit == 0) return LEVEL_END;
    ++cursor.text;
    cursor.curCol += cells_of(unit);
    if (unit == '\n') {
        cursor.curCol = 0;
        ++cursor.curLine;
    }
    return unit;
}

std::size_t get_run_memory(Cursor& cursor, Unit* to, std::size_t room, const RunStops& stops) {
    const std::size_t count = take_run(cursor, to, room, stops);
    for (std::size_t i = 0; i < count; ++i) cursor.curCol += cells_of(to[i]);
    return count;
}

constexpr Reader NOTHING_READER = {getc_nothing, get_run_nothing};
constexpr Reader ENTITY_READER = {getc_entity, get_run_entity};
constexpr Reader MEMORY_READER = {getc_memory, get_run_memory};

const char* file_name_of(const char* systemId) {
    constexpr std::size_t prefixLength = sizeof FILE_PREFIX - 1;
    const bool hasPrefix =
        systemId != nullptr && std::strncmp(systemId, FILE_PREFIX, prefixLength) == 0;
    return hasPrefix ? systemId + prefixLength : systemId;
}

bool reads_file(InputKind kind) { return kind != INPUT_ENTITY_TEXT && kind != INPUT_MEMORY; }

// A replacement text has no lines of its own: the line goes on from the level below it.
bool counts_lines(InputKind kind) { return kind != INPUT_ENTITY_TEXT; }

}  // namespace

std::unique_ptr<ByteStream> open_system_id(const char* path) {
    return ByteStream::open(file_name_of(path));
}

std::unique_ptr<ByteStream> open_external_id(const char* path) {
    return ByteStream::openRegular(file_name_of(path));
}

Input::Input(LevelEvents& levelEvents)
    : expansion(*this), events(levelEvents), cursor(expansion), reader(NOTHING_READER) {}

void Input::open_input(const char* name, ByteStream* file, const Unit* memory) {
    cursor.curLine = 1;
    cursor.curCol = 1;
    columnOfToken = 1;
    nameOfDocument = name != nullptr ? name : MEMORY_NAME;
    memoryStart = memory;

    InputLevel level;
    level.kind = memory != nullptr ? INPUT_MEMORY : INPUT_DOCUMENT;
    start_level(level, nullptr);
    if (memory != nullptr) {
        encoding = UTF16;
        cursor.text = memory;
        reader = MEMORY_READER;
    } else {
        start_file(level, file);
    }
    inputStack.push_back(std::move(level));
    read_char();
}

void Input::push_entity_text(const Unit* name, const Unit* text) {
    InputLevel level;
    level.kind = INPUT_ENTITY_TEXT;
    start_level(level, name);
    cursor.text = text;
    reader = ENTITY_READER;
    inputStack.push_back(std::move(level));
}

void Input::push_external_entity(const Unit* name, std::unique_ptr<ByteStream> file,
                                 bool isRepeated) {
    InputLevel level;
    level.kind = INPUT_EXTERNAL_ENTITY;
    level.isRepeated = isRepeated;
    level.owned = std::move(file);
    expansion.count(weight::OPENED_ENTITY);
    start_level(level, name);
    start_file(level, level.owned.get());
    inputStack.push_back(std::move(level));
}

void Input::push_external_subset(std::unique_ptr<ByteStream> file) {
    if (!inputStack.empty()) {
        inputStack.back().hasHeldChar = true;
        inputStack.back().heldChar = curChar;
    }
    InputLevel level;
    level.kind = INPUT_EXTERNAL_SUBSET;
    level.owned = std::move(file);
    start_level(level, nullptr);
    start_file(level, level.owned.get());
    events.subset_level_started();
    inputStack.push_back(std::move(level));
    read_char();
}

// The first half of each push: the place in the level below is kept, and the event goes out.
void Input::start_level(InputLevel& level, const Unit* name) {
    if (inputStack.size() >= DEEPEST_STACK) {
        qvox_report(REPORT_ERROR, QVOXException::INVALID_ENTITY_REF_ERR, "input stack overflow");
    }
    save_place();
    level.name = name;
    if (name != nullptr) {
        events.ev_start_entity(name);
    } else if (level.kind == INPUT_EXTERNAL_SUBSET) {
        events.ev_start_entity(SUBSET_NAME);
    }
}

void Input::save_place() {
    if (inputStack.empty()) return;
    InputLevel& below = inputStack.back();
    below.savedText = cursor.text;
    if (counts_lines(below.kind)) below.savedLine = cursor.curLine;
}

// The second half for a file: its encoding is detected and it becomes the current file.
void Input::start_file(InputLevel& level, ByteStream* file) {
    const DetectedEncoding detected = detect_encoding(*file);
    level.file = file;
    level.encoding = detected.encoding;
    level.byteOrder = detected.byteOrder;
    level.decoderBelow = std::exchange(cursor.decoder, DecoderState());
    level.fileBelow = std::exchange(cursor.curFile, file);
    encoding = detected.encoding;
    cursor.byteOrder = detected.byteOrder;
    reader = select_getc_proc(encoding);
    cursor.curLine = 1;
}

// Makes the level that has come to the top current again.
void Input::resume_level(const InputLevel& level) {
    cursor.text = level.savedText;
    if (level.kind == INPUT_ENTITY_TEXT) {
        reader = ENTITY_READER;
        return;
    }
    cursor.curLine = level.savedLine;
    if (level.kind == INPUT_MEMORY) {
        reader = MEMORY_READER;
        return;
    }
    encoding = level.encoding;
    cursor.byteOrder = level.byteOrder;
    reader = select_getc_proc(encoding);
}

void Input::tell_end(const InputLevel& ended) {
    if (ended.name != nullptr) {
        events.ev_end_entity(ended.name);
    } else if (ended.kind == INPUT_EXTERNAL_SUBSET) {
        events.ev_end_entity(SUBSET_NAME);
        events.subset_level_ended();
    }
}

void Input::count_level(const InputLevel& ended) {
    if (ended.isRepeated) {
        expansion.count(ended.file->position());
    } else {
        expansion.count_read(amount_read_of(ended));
    }
}

// The next character of the level that has come to the top, or LEVEL_END.
int Input::next_character(InputLevel& level) {
    if (!level.hasHeldChar) return reader.getc(cursor);
    level.hasHeldChar = false;
    return level.heldChar;
}

// Ends the top level, and those below it that are exhausted too, and goes on: the next character,
// or END_OF_INPUT behind the bottom level.
int Input::pop_input() {
    int c = LEVEL_END;
    while (c == LEVEL_END) {
        end_level();
        if (inputStack.empty()) {
            reader = NOTHING_READER;
            return END_OF_INPUT;
        }
        c = next_character(inputStack.back());
    }
    return c;
}

void Input::end_level() {
    if (inputStack.empty()) {
        qvox_report(REPORT_FATAL, QVOXException::INTERNAL_ERR, "input stack underflow");
    }
    if (inputStack.back().file != nullptr) check_end_of_file(*inputStack.back().file);
    save_place();
    count_level(inputStack.back());
    InputLevel ended = std::move(inputStack.back());
    inputStack.pop_back();
    if (reads_file(ended.kind)) {
        cursor.decoder = ended.decoderBelow;
        cursor.curFile = ended.fileBelow;
    }
    ended.owned.reset();
    if (inputStack.empty()) return;
    resume_level(inputStack.back());
    tell_end(ended);
}

void Input::switch_encoding(EncodingId declared) {
    encoding = declared;
    if (!reads_file(inputStack.back().kind)) return;
    inputStack.back().encoding = declared;
    reader = select_getc_proc(declared);
}

Amount Input::amount_read() const {
    Amount amount = 0;
    for (const InputLevel& level : inputStack) amount += amount_read_of(level);
    return amount;
}

// Bytes of a file level, units of a string in memory; nothing for what only repeats.
Amount Input::amount_read_of(const InputLevel& level) const {
    if (level.kind == INPUT_MEMORY) {
        const bool isCurrent = &level == &inputStack.back();
        const Unit* position = isCurrent ? cursor.text : level.savedText;
        return static_cast<Amount>(position - memoryStart);
    }
    return level.file != nullptr && !level.isRepeated ? level.file->position() : 0;
}

}  // namespace qvox
