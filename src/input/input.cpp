#include "input/input.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "input/cells.h"
#include "input/encoding.h"
#include "input/file_end.h"
#include "input/reading.h"
#include "runtime/report.h"

namespace qvox {

namespace {

constexpr std::size_t DEEPEST_STACK = 1024;
constexpr Unit SUBSET_NAME[] = {'[', 'd', 't', 'd', ']', 0};
constexpr char MEMORY_NAME[] = "(memory)";
constexpr char FILE_PREFIX[] = "file:";

// The reader behind the end of the bottom level.
int getc_nothing(Cursor& /*cursor*/) { return END_OF_INPUT; }

int getc_entity(Cursor& cursor) {
    const Unit unit = *cursor.text;
    if (unit == 0) return LEVEL_END;
    ++cursor.text;
    cursor.expansion.count(1);
    return unit;
}

int getc_memory(Cursor& cursor) {
    const Unit unit = *cursor.text;
    if (unit == 0) return LEVEL_END;
    ++cursor.text;
    cursor.curCol += unit > 0xFF ? 2 : 1;
    if (unit == '\n') {
        cursor.curCol = 0;
        ++cursor.curLine;
    }
    return unit;
}

bool ends_run(Unit unit, const RunStops& stops) {
    return unit < 0x80 ? stops.ascii[unit] : stops.wide;
}

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
    : expansion(*this),
      events(levelEvents),
      cursor(expansion),
      reader(getc_nothing),
      windowSize(reading_of_thread().windowUnits) {}

void Input::open_input(const char* name, ByteStream* file, const Unit* memory) {
    cursor.curLine = 1;
    cursor.curCol = 1;
    cursor.tokenCol = 1;
    nameOfDocument = name != nullptr ? name : MEMORY_NAME;
    memoryStart = memory;

    InputLevel level;
    level.kind = memory != nullptr ? INPUT_MEMORY : INPUT_DOCUMENT;
    start_level(level, nullptr);
    if (memory != nullptr) {
        encoding = UTF16;
        cursor.text = memory;
        reader = getc_memory;
        window.open(windowSize, nullptr, {copy_units, select_count_cells(UTF16)});
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
    reader = getc_entity;
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
    save_level();
    level.name = name;
    if (name != nullptr) {
        events.ev_start_entity(name);
    } else if (level.kind == INPUT_EXTERNAL_SUBSET) {
        events.ev_start_entity(SUBSET_NAME);
    }
}

// What the top level goes on with when the one above it has ended.
void Input::save_level() {
    counted();
    if (inputStack.empty()) return;
    InputLevel& below = inputStack.back();
    below.window = std::exchange(window, Window());
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
    window.open(windowSize, file, file_window_reader());
}

WindowReader Input::file_window_reader() const {
    return {select_bulk_decoder(encoding, cursor.byteOrder), select_count_cells(encoding)};
}

const Cursor& Input::counted() {
    if (window.is_open()) window.count(cursor);
    return cursor;
}

std::size_t Input::curGetRun(Unit* to, std::size_t room, const RunStops& stops) {
    room = std::min(room, static_cast<std::size_t>(window.end - window.next));
    std::size_t count = 0;
    for (; count < room && !ends_run(window.next[count], stops); ++count) {
        to[count] = window.next[count];
    }
    window.next += count;
    return count;
}

int Input::read_beyond_window() {
    const int c = getc();
    return c != LEVEL_END ? c : pop_input();
}

// The next character of the current level, or LEVEL_END. Where the window has none, the decoder
// reads one, or says what is wrong with it.
int Input::getc() {
    if (window.next != window.end) return *window.next++;
    if (window.is_open()) {
        const Unit* last = window.has_last() ? window.next - 1 : window.next;
        if (window.more(cursor, last) != 0) return *window.next++;
        window.leave(cursor);
    }
    return reader(cursor);
}

// Makes the level that has come to the top current again.
void Input::resume_level(InputLevel& level) {
    window = std::exchange(level.window, Window());
    cursor.text = level.savedText;
    if (level.kind == INPUT_ENTITY_TEXT) {
        reader = getc_entity;
        return;
    }
    cursor.curLine = level.savedLine;
    if (level.kind == INPUT_MEMORY) {
        reader = getc_memory;
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
    if (!level.hasHeldChar) return getc();
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
            reader = getc_nothing;
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
    count_level(inputStack.back());
    counted();
    window = Window();
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
    const bool isNew = declared != encoding;
    encoding = declared;
    if (!isNew || !reads_file(inputStack.back().kind)) return;
    inputStack.back().encoding = declared;
    reader = select_getc_proc(declared);
    if (!window.is_open()) return;
    window.give_back(cursor);
    window.change_reader(file_window_reader());
}

Amount Input::amount_read() const {
    Amount amount = 0;
    for (const InputLevel& level : inputStack) amount += amount_read_of(level);
    return amount;
}

// Bytes of a file level, units of a string in memory; nothing for what only repeats.
Amount Input::amount_read_of(const InputLevel& level) const {
    const bool isCurrent = &level == &inputStack.back();
    const Window& ahead = isCurrent ? window : level.window;
    if (level.kind == INPUT_MEMORY) {
        const Unit* decoded = isCurrent ? cursor.text : level.savedText;
        return static_cast<Amount>(decoded - memoryStart - (ahead.end - ahead.next));
    }
    if (level.file == nullptr || level.isRepeated) return 0;
    return ahead.is_open() ? ahead.position() : level.file->position();
}

}  // namespace qvox
