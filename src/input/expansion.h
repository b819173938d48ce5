// The bound on what a document may make of little. Whatever multiplies is counted in units of
// text; past a free amount the count may not exceed a multiple of what was read otherwise, so that
// a small document doesn't take a machine's memory or a day's work.
//
// An external entity's file counts as read the first time. Each further reading of it is
// replacement text, and opening a file costs something by itself, so that tiny files that include
// each other come to an end too.
#pragma once

namespace qvox {

using Amount = unsigned long long;

// What one of each counts for, beside the units of its text.
namespace weight {
inline constexpr Amount OPENED_ENTITY = 128;       // an external entity's file
inline constexpr Amount DEFAULT_ATTRIBUTE = 8;     // a declared default that a tag takes
inline constexpr Amount REPEATED_DEFINITION = 64;  // reported again by a further declaration
inline constexpr Amount WARNING = 256;             // a line that the user sees
}  // namespace weight

class Expansion {
public:
    // Units that are free, whatever the size of the document.
    static constexpr Amount FREE = 16777216;
    // How often beyond that what was read may be repeated.
    static constexpr Amount LARGEST_RATIO = 100;

    // What was read so far of the files and strings that are open.
    class OpenLevels {
    public:
        virtual Amount amount_read() const = 0;

    protected:
        ~OpenLevels() = default;
    };

    explicit Expansion(const OpenLevels& open) : levels(open) {}

    // Counts units that come of what was read already, and raises the error of a document that
    // makes too many.
    void count(Amount units) {
        expanded += units;
        if (expanded > limit) check();
    }

    // Whether that many more may be counted, for sure.
    bool has_room(Amount units) const { return expanded <= limit && units <= limit - expanded; }

    // What was read of a file or string that is closed now.
    void count_read(Amount amount) { closedAmount += amount; }

private:
    void check();

    const OpenLevels& levels;
    Amount expanded = 0;
    Amount limit = FREE;  // up to here `expanded` needs no closer look
    Amount closedAmount = 0;
};

}  // namespace qvox
