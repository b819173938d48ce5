#include "input/window.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "text/lanes.h"

namespace qvox {

namespace {

// More bytes than any character has, with an escape sequence or a CR in front.
constexpr std::ptrdiff_t LONGEST_CHARACTER = 8;

// Decoded units are looked at while they are near.
constexpr std::size_t STEPS_IN_WINDOW = 4;

}  // namespace

void Window::open(std::size_t size, ByteStream* fileOfLevel, const WindowReader& windowReader) {
    if (size == 0) return;
    capacity = size;
    largestCapacity = size * MOST_GROWTH;
    stepSize = std::max<std::size_t>(size / STEPS_IN_WINDOW, 1);
    file = fileOfLevel;
    reader = windowReader;
    memory.reset(new Unit[size + OVERRUN]);
    steps.reserve(STEPS_IN_WINDOW);
    restart();
}

void Window::restart() {
    first = memory.get();
    next = first;
    end = first;
    counted = first;
    mark = nullptr;
    steps.clear();
}

std::size_t Window::more(Cursor& cursor, const Unit* kept) {
    if (cursor.decoder.has_pending_unit()) return 0;
    make_room(cursor, kept);
    if (file != nullptr && file->readyEnd() - file->ready() < LONGEST_CHARACTER) {
        file->more(steps.empty() ? file->position() : steps.front().position);
    }
    Stretch stretch = undecoded(cursor);
    const ByteStream::Position start = file != nullptr ? file->position() : 0;
    reader.decode(stretch);
    const auto count = static_cast<std::size_t>(stretch.to - end);
    if (count == 0) return 0;
    steps.push_back({end, start, cursor.decoder.kanjiMode});
    if (file != nullptr) {
        file->take(stretch.from);
    } else {
        cursor.text = reinterpret_cast<const Unit*>(stretch.from);
    }
    cursor.decoder.kanjiMode = stretch.kanjiMode;
    end = stretch.to;
    std::memset(end, 0, OVERRUN * sizeof(Unit));
    return count;
}

Stretch Window::undecoded(const Cursor& cursor) const {
    const auto room = static_cast<std::size_t>(memory.get() + capacity - end);
    Unit* const toEnd = end + std::min(room, stepSize);
    if (file != nullptr) {
        return {file->ready(), file->readyEnd(), end, toEnd, cursor.decoder.kanjiMode};
    }
    return {reinterpret_cast<const unsigned char*>(cursor.text), nullptr, end, toEnd, false};
}

void Window::make_room(Cursor& cursor, const Unit* kept) {
    drop_before(cursor, kept);
    if (!has_room()) move_to_front();
    if (!has_room() && capacity < largestCapacity) grow();
}

bool Window::has_room() const {
    return static_cast<std::size_t>(memory.get() + capacity - end) >= stepSize;
}

// Units go by whole steps: those that stay begin where their bytes are known.
void Window::drop_before(Cursor& cursor, const Unit* kept) {
    const auto behind = std::find_if(steps.begin(), steps.end(),
                                     [kept](const Step& step) { return step.unit > kept; });
    if (behind - steps.begin() < 2) return;
    steps.erase(steps.begin(), behind - 1);
    first = steps.front().unit;
    if (counted < first) count_to(cursor, first);
}

void Window::grow() {
    std::unique_ptr<Unit[]> larger(new Unit[2 * capacity + OVERRUN]);
    move_to(larger.get());
    memory = std::move(larger);
    capacity *= 2;
}

void Window::move_to_front() {
    if (first != memory.get()) move_to(memory.get());
}

void Window::move_to(Unit* front) {
    std::memmove(front, first, (static_cast<std::size_t>(end - first) + OVERRUN) * sizeof(Unit));
    const auto moved = [from = first, front](const Unit* place) { return front + (place - from); };
    next = moved(next);
    end = moved(end);
    counted = moved(counted);
    if (mark != nullptr) mark = moved(mark);
    for (Step& step : steps) step.unit = moved(step.unit);
    first = front;
}

void Window::leave(Cursor& cursor) {
    count(cursor);
    restart();
}

void Window::give_back(Cursor& cursor) {
    count(cursor);
    if (next != end) {
        const Stretch read = redecoded(next);
        file->take(read.from);
        cursor.decoder.kanjiMode = read.kanjiMode;
    }
    restart();
}

ByteStream::Position Window::position() const {
    const ByteStream::Position decoded = file->position();
    return next == end ? decoded
                       : decoded - static_cast<std::size_t>(file->ready() - redecoded(next).from);
}

// Decodes the step of a unit again, up to that unit. Decoding is a matter of bytes alone, so the
// same comes out of it.
Stretch Window::redecoded(const Unit* place) const {
    const auto behind = std::find_if(steps.begin(), steps.end(),
                                     [place](const Step& step) { return step.unit > place; });
    const Step& step = *(behind - 1);
    const auto size = static_cast<std::size_t>(place - step.unit);
    std::vector<Unit> units(size + OVERRUN);
    Stretch stretch = {file->at(step.position), file->readyEnd(), units.data(), units.data() + size,
                       step.kanjiMode};
    reader.decode(stretch);
    return stretch;
}

void Window::count_to(Cursor& cursor, const Unit* place) {
    if (mark != nullptr && mark <= place) {
        cursor.tokenCol = column_at(std::exchange(mark, nullptr), cursor.curCol);
    }
    if (counted == place) return;
    cursor.curCol = column_at(place, cursor.curCol);
    cursor.curLine += static_cast<int>(lanes::count_of(counted, place, '\n'));
    counted = place;
}

// The column at a place behind what is counted, where `column` is reached.
int Window::column_at(const Unit* place, int column) const {
    const Unit* const lineStart = lanes::behind_last(counted, place, '\n');
    const bool isInLine = lineStart == counted;
    return (isInLine ? column : 0) + static_cast<int>(reader.cells(lineStart, place));
}

}  // namespace qvox
