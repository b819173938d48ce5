// The window: units of a level that were decoded ahead of the reader, as far as they are usual.
// They are valid, with their line ends normalised; lines and columns are counted only when somebody
// asks for the place. A place in the window is a pointer to its unit, good until more units are
// decoded.
//
// The bytes that the units came from stay in the file's buffer as long as the units are there, so
// that reading can be taken up by another decoder at any unit.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "input/bulk_decoders.h"
#include "input/cells.h"
#include "input/cursor.h"
#include "platform/byte_stream.h"
#include "text/wide.h"

namespace qvox {

// How a window decodes its level, and counts what it decoded.
struct WindowReader {
    BulkDecoder decode;
    CountCells cells;
};

class Window {
public:
    // A closed window: there is nothing in it, ever.
    Window() = default;

    // Opens the window for `size` units of a file, or of the string that the cursor reads where
    // `file` is null. It grows to MOST_GROWTH times the size where more units have to stay.
    static constexpr std::size_t MOST_GROWTH = 4;
    void open(std::size_t size, ByteStream* file, const WindowReader& windowReader);
    bool is_open() const { return memory != nullptr; }

    // The bytes behind what was read are to be decoded in another way.
    void change_reader(const WindowReader& windowReader) { reader = windowReader; }

    // Decodes more units behind the last, and returns how many: none where the next character isn't
    // usual, and where the window is full and can't grow. The units from `kept` on stay there.
    std::size_t more(Cursor& cursor, const Unit* kept);

    // Empties the window once all of its units are taken: a decoder by characters goes on.
    void leave(Cursor& cursor);

    // The same with units left, which are to be decoded again.
    void give_back(Cursor& cursor);

    // Brings the cursor's line and columns up to the units that were taken.
    void count(Cursor& cursor) { count_to(cursor, next); }

    // Bytes of the file up to behind the last unit that was taken.
    ByteStream::Position position() const;

    // Whether the last unit that was taken is still there, in front of the next.
    bool has_last() const { return next != first; }

    Unit* next = nullptr;        // the next unit
    Unit* end = nullptr;         // behind the last one; OVERRUN zeros follow
    const Unit* mark = nullptr;  // where the current token begins, if its column isn't counted yet

private:
    // Where decoding was taken up.
    struct Step {
        Unit* unit;
        ByteStream::Position position;
        bool kanjiMode;
    };

    void restart();
    void make_room(Cursor& cursor, const Unit* kept);
    bool has_room() const;
    void drop_before(Cursor& cursor, const Unit* kept);
    void grow();
    void move_to_front();
    void move_to(Unit* front);
    Stretch undecoded(const Cursor& cursor) const;
    void count_to(Cursor& cursor, const Unit* place);
    int column_at(const Unit* place, int column) const;
    Stretch redecoded(const Unit* place) const;

    std::unique_ptr<Unit[]> memory;
    std::size_t capacity = 0;
    std::size_t largestCapacity = 0;
    std::size_t stepSize = 0;  // units that are decoded at a time
    ByteStream* file = nullptr;
    WindowReader reader = {nullptr, nullptr};
    Unit* first = nullptr;          // the first unit that is still there
    const Unit* counted = nullptr;  // how far the cursor's line and column go
    std::vector<Step> steps;        // of the units that are still there
};

}  // namespace qvox
