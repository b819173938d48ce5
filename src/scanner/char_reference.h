// The number of a character reference, digit by digit.
#pragma once

#include "input/xml_char.h"

namespace qvox {

class CharReference {
public:
    // Takes the next character behind "&#": a digit, or the x that goes before hexadecimal ones.
    // False for any other.
    bool take(int c) {
        if (c == 'x' && isFirst) {
            base = 16;
            isFirst = false;
            return true;
        }
        const int digit = digit_value(c);
        if (digit == NO_DIGIT) return false;
        isFirst = false;
        hasDigits = true;
        // A number that is too large stays so: it isn't a character.
        if (number <= LARGEST_CHARACTER) number = number * base + digit;
        return true;
    }

    // Whether there was a digit at all, and whether the number is that of a character.
    bool has_number() const { return hasDigits; }
    bool is_character() const { return hasDigits && is_xml_char(number); }
    int value() const { return static_cast<int>(number); }

private:
    static constexpr int NO_DIGIT = -1;
    static constexpr long long LARGEST_CHARACTER = 0x10FFFF;

    int digit_value(int c) const {
        if (c >= '0' && c <= '9') return c - '0';
        if (base == 16 && c >= 'A' && c <= 'F') return c - 'A' + 10;
        if (base == 16 && c >= 'a' && c <= 'f') return c - 'a' + 10;
        return NO_DIGIT;
    }

    int base = 10;
    long long number = 0;
    bool isFirst = true;
    bool hasDigits = false;
};

}  // namespace qvox
