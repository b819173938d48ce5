// Stack guards that carry a converted copy of a text for the duration of one call.
#pragma once

#include "text/wide.h"

namespace qvox {

// A text in 16-bit units with its line ends normalised.
class WideTemp {
public:
    // Converts Shift_JIS text, which must not be null. Bytes that are none become U+FFFD.
    explicit WideTemp(const char* narrow);
    // Borrows `wide` if it holds no CR, else makes a copy with LF for each CR LF and each CR alone.
    explicit WideTemp(const Unit* wide);
    WideTemp(const WideTemp&) = delete;
    WideTemp& operator=(const WideTemp&) = delete;
    ~WideTemp();

    const Unit* get() const { return text; }

private:
    Unit* owned = nullptr;
    const Unit* text = nullptr;
};

// A 16-bit text in Shift_JIS. This is how text gets into messages.
class OsTemp {
public:
    explicit OsTemp(const Unit* wide);
    OsTemp(const OsTemp&) = delete;
    OsTemp& operator=(const OsTemp&) = delete;
    ~OsTemp();

    const char* get() const { return text; }

private:
    char* text;
};

}  // namespace qvox
