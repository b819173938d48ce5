/// \file
/// Xstring, the one text type of the library.
#ifndef QVOX_XSTRING_H
#define QVOX_XSTRING_H

#include <cstddef>
#include <cstring>
#include <cwchar>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>

#include <qvox/export.h>

namespace qvox {

/// Character traits of 16-bit units, compared as unsigned values.
struct UnitTraits {
    using char_type = unsigned short;
    using int_type = unsigned int;
    using off_type = std::streamoff;
    using pos_type = std::streampos;
    using state_type = std::mbstate_t;

    static constexpr void assign(char_type& to, const char_type& from) noexcept { to = from; }
    static constexpr bool eq(char_type a, char_type b) noexcept { return a == b; }
    static constexpr bool lt(char_type a, char_type b) noexcept { return a < b; }

    static constexpr int compare(const char_type* a, const char_type* b,
                                 std::size_t count) noexcept {
        for (std::size_t i = 0; i < count; ++i) {
            if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
        }
        return 0;
    }

    static constexpr std::size_t length(const char_type* text) noexcept {
        std::size_t count = 0;
        while (text[count] != 0) ++count;
        return count;
    }

    static constexpr const char_type* find(const char_type* text, std::size_t count,
                                           const char_type& unit) noexcept {
        for (std::size_t i = 0; i < count; ++i) {
            if (text[i] == unit) return text + i;
        }
        return nullptr;
    }

    static char_type* move(char_type* to, const char_type* from, std::size_t count) noexcept {
        if (count != 0) std::memmove(to, from, count * sizeof(char_type));
        return to;
    }

    static char_type* copy(char_type* to, const char_type* from, std::size_t count) noexcept {
        if (count != 0) std::memcpy(to, from, count * sizeof(char_type));
        return to;
    }

    static char_type* assign(char_type* to, std::size_t count, char_type unit) noexcept {
        for (std::size_t i = 0; i < count; ++i) to[i] = unit;
        return to;
    }

    static constexpr int_type not_eof(int_type value) noexcept {
        return value == eof() ? 0 : value;
    }
    static constexpr char_type to_char_type(int_type value) noexcept {
        return static_cast<char_type>(value);
    }
    static constexpr int_type to_int_type(char_type unit) noexcept { return unit; }
    static constexpr bool eq_int_type(int_type a, int_type b) noexcept { return a == b; }
    static constexpr int_type eof() noexcept { return static_cast<int_type>(-1); }
};

/// A text of 16-bit units, which hold UTF-16 code units.
///
/// A string is in one of three states:
///  - null: there is no text. This is the default, and it differs from empty.
///  - ordinary: the string owns its text, which may be empty.
///  - bulk: the string only borrows a text that somebody else owns, and is valid as long as that
///    text is. The library makes such a string in one place: a long run of character data goes to
///    ContentHandler::characters in this form. What is copied or moved out of it is an ordinary
///    string.
///
/// No text holds a NUL unit. Lengths count 16-bit units, not characters: a character above U+FFFF
/// has two. Narrow text (`const char*`) that goes in is Shift_JIS, and ASCII is a part of that;
/// UTF-8 goes in and out by name, with fromUtf8() and utf8().
///
/// Copies are independent values, also between threads; that of an ordinary string costs no memory.
/// One object may be read by several threads at a time, except through the conversions that take no
/// buffer: these share one result buffer in the process. Memory that can't be had raises
/// std::bad_alloc, and a text longer than the string type allows std::length_error.
class QVOX_API Xstring {
    // For comparisons with all that is 16-bit text, but not with a literal 0 or NULL.
    template <typename Units>
    using IfUnits = std::enable_if_t<std::is_convertible_v<const Units&, std::u16string_view> &&
                                         !std::is_same_v<Units, Xstring>,
                                     int>;

public:
    /// A null string.
    constexpr Xstring() noexcept = default;

    /// The text `s`, in Shift_JIS, up to its NUL; each CR LF becomes LF, and bytes that form no
    /// character become U+FFFD. Null for a null pointer.
    Xstring(const char* s);
    /// \copydoc Xstring(const char*)
    Xstring(const unsigned char* s);

    /// A copy of the units of `s` up to its NUL. CR LF becomes LF, and so does a CR alone (XML 1.0,
    /// end-of-line handling). Null for a null pointer.
    Xstring(const unsigned short* s);
    /// \copydoc Xstring(const unsigned short*)
    Xstring(const char16_t* s);
    /// The same of the units of `s`, up to a NUL if there is one. Never null.
    Xstring(std::u16string_view s);
    /// \copydoc Xstring(std::u16string_view)
    Xstring(const std::u16string& s) : Xstring(std::u16string_view(s)) {}

    /// A bulk string over the `length` units at `s`, which are neither copied nor looked at. They
    /// stay the caller's, must be followed by a NUL unit, and must outlive this object. For a null
    /// pointer the empty string, or null where `length` is -1.
    Xstring(const unsigned short* s, int length) noexcept;

    /// A null string from a null one, else an ordinary string with a copy of the text up to its
    /// first NUL, also where `other` only borrows its text.
    Xstring(const Xstring& other);
    /// Takes the text of an ordinary string over, which can't fail, and leaves `other` null. What
    /// only borrows its text is copied.
    // NOLINTNEXTLINE(bugprone-exception-escape,performance-noexcept-move-constructor)
    Xstring(Xstring&& other) : units(other.units), count(other.count), state(other.state) {
        if (state >= State::LENT) {
            copyText(other);
        } else {
            other.forget();
        }
    }
    ~Xstring() {
        if (state == State::OWNED) release();
    }

    /// `utf8` as 16-bit units, up to a NUL if there is one, with its line ends as they are. Each
    /// byte that is not part of a character becomes U+FFFD. Never null.
    static Xstring fromUtf8(std::string_view utf8);

    /// Length in 16-bit units; 0 for a null string.
    int length() const noexcept { return count; }
    /// Whether there is no text, which an empty string has.
    bool isNull() const noexcept { return state == State::NONE; }
    /// Whether the text is borrowed. Changing the string or copying it ends that.
    bool isBulk() const noexcept { return state == State::BULK; }

    /// The units and a NUL behind them, never a null pointer. They belong to the string (to the
    /// lender of a bulk string) and stay until it is changed or destroyed.
    const unsigned short* data() const noexcept { return units; }
    /// The same as data().
    const unsigned short* c_str() const noexcept { return data(); }
    /// The same as data().
    const char16_t* u16_str() const noexcept;
    /// The length() units at u16_str(); empty for a null string.
    std::u16string_view view() const noexcept;
    /// The same as view().
    operator std::u16string_view() const noexcept { return view(); }

    /// The text in UTF-8, line ends as they are; half of a surrogate pair becomes U+FFFD. Empty for
    /// a null string.
    std::string utf8() const;

    /// \name Conversions
    /// Each has a form that fills the caller's buffer and returns it, and a form that returns a
    /// buffer of the library. The latter is overwritten by the next conversion of any string in the
    /// process and freed with the last parser: don't free it, and don't use that form where two
    /// threads may convert at a time. A result is NUL-terminated. In the Japanese encodings it has
    /// CR LF for each LF, and `?` for a character that the encoding doesn't have.
    /// @{

    /// The low byte of each unit, unchecked, line ends as they are. Needs length() + 1 bytes.
    char* ascii_str(char* buffer) const;
    /// The same in the shared buffer.
    char* ascii_str() const;
    /// EUC-JP. Needs 2 * length() + 1 bytes.
    unsigned char* euc_str(unsigned char* buffer) const;
    /// The same in the shared buffer.
    unsigned char* euc_str() const;
    /// Shift_JIS. Needs 2 * length() + 1 bytes.
    unsigned char* sjis_str(unsigned char* buffer) const;
    /// The same in the shared buffer.
    unsigned char* sjis_str() const;
    /// JIS: two 7-bit bytes for a double-byte character, without escape sequences around them.
    /// Needs 2 * length() + 1 bytes.
    char* jis_str(char* buffer) const;
    /// The same in the shared buffer.
    char* jis_str() const;
    /// The encoding of narrow text in this library, which is Shift_JIS. Needs 2 * length() + 1
    /// bytes.
    void* os_str(void* buffer) const;
    /// The same in the shared buffer.
    void* os_str() const;
    /// A copy of the units with a NUL, line ends as they are. Needs 2 * (length() + 1) bytes.
    unsigned short* unicode_str(unsigned short* buffer) const;
    /// The string's own units, as data() gives them: not a copy, and not to be changed.
    unsigned short* unicode_str() const;
    /// @}

    /// The units with an index i, 0 <= i < length(), for which `start` <= i < `start` + `count`.
    /// Any range is allowed; one that misses the string gives the empty string, never null.
    Xstring substr(int start, int count) const;

    /// The index in units of the first occurrence of `pattern` (Shift_JIS). 0 for an empty pattern,
    /// and the largest unsigned value where there is none.
    unsigned int find(const char* pattern) const;
    /// The same for 16-bit text.
    unsigned int find(std::u16string_view pattern) const noexcept;

    /// \name Assignment and appending
    /// A null pointer gives no text, and leaves a null string null. 16-bit text is taken up to its
    /// first NUL with its line ends as they are, narrow text as by the constructor. A bulk string
    /// becomes an ordinary one that owns its text.
    /// @{

    /// Becomes the text `s`, in Shift_JIS.
    Xstring& operator=(const char* s);
    /// Becomes the units of `s`.
    Xstring& operator=(const unsigned short* s);
    /// Becomes the units of `s`.
    Xstring& operator=(const char16_t* s);
    /// Becomes the units of `s`; never null.
    Xstring& operator=(std::u16string_view s);
    /// A null `other` empties this string; only a string that was null is null afterwards.
    Xstring& operator=(const Xstring& other);
    /// As the copy, but takes the text of an ordinary string over and leaves `other` null.
    // NOLINTNEXTLINE(bugprone-exception-escape,performance-noexcept-move-constructor)
    Xstring& operator=(Xstring&& other);
    /// Appends the text `s`, in Shift_JIS.
    Xstring& operator+=(const char* s);
    /// Appends one unit. The unit 0 changes nothing.
    Xstring& operator+=(unsigned short unit);
    /// Appends the units of `s`.
    Xstring& operator+=(const unsigned short* s);
    /// Appends the units of `s`.
    Xstring& operator+=(const char16_t* s);
    /// Appends the units of `s`.
    Xstring& operator+=(std::u16string_view s);
    /// Appends the text of `other`, which may be this string. A null one changes nothing.
    Xstring& operator+=(const Xstring& other);
    /// @}

    /// Compares unit by unit with the bytes of `s`, without conversion: meant for ASCII literals. A
    /// byte from 0x80 up equals nothing. A null string equals a null pointer and nothing else.
    bool operator==(const char* s) const;
    /// The opposite of ==.
    bool operator!=(const char* s) const { return !(*this == s); }

    /// Whether both have the same units. A null string and an empty one count as equal here.
    bool operator==(const Xstring& other) const noexcept;
    /// The opposite of ==.
    bool operator!=(const Xstring& other) const noexcept { return !(*this == other); }

    /// Whether both have the same units, for what converts to std::u16string_view. A null string
    /// equals a null pointer and an empty view.
    template <typename Units, IfUnits<Units> = 0>
    bool operator==(const Units& s) const noexcept {
        return isText(s);
    }
    /// The opposite of ==.
    template <typename Units, IfUnits<Units> = 0>
    bool operator!=(const Units& s) const noexcept {
        return !isText(s);
    }

    /// A null string, which lives as long as the library: what accessors return for no value.
    static const Xstring Null;

private:
    friend struct LentText;

    enum class State : unsigned char {
        NONE,   // null
        PLAIN,  // ordinary, and nothing is owned: the empty string
        OWNED,  // ordinary; the text is a block that copies share
        LENT,   // borrowed inside the library: ordinary to everybody else
        BULK    // borrowed
    };

    Xstring(const unsigned short* text, int length, State textState) noexcept
        : units(text), count(length), state(textState) {}

    // Forgets the text, which is somebody else's by now.
    void forget() noexcept {
        units = noText;
        count = 0;
        state = State::NONE;
    }
    void release() noexcept;
    void take(const unsigned short* text, std::size_t length, State textState) noexcept;
    void copyText(const Xstring& other);
    void own();
    void become(const unsigned short* text, std::size_t length);
    void append(const unsigned short* text, std::size_t length);
    bool isText(const char16_t* s) const noexcept;
    bool isText(std::u16string_view s) const noexcept;

    static constexpr unsigned short noText[1] = {0};

    const unsigned short* units = noText;  // NUL-terminated
    int count = 0;
    State state = State::NONE;
};

/// The text of `a` followed by that of `b`; null where both are.
QVOX_API Xstring operator+(const Xstring& a, const Xstring& b);

/// Writes `s` in Shift_JIS, with CR LF for each LF.
QVOX_API std::ostream& operator<<(std::ostream& stream, const Xstring& s);

}  // namespace qvox

#endif
