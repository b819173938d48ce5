#include <algorithm>
#include <cstdint>
#include <ostream>
#include <stdexcept>
#include <utility>

#include <qvox/xstring.h>

#include "text/conversion_buffer.h"
#include "text/native_text.h"
#include "text/temporaries.h"
#include "text/text_block.h"
#include "text/utf8.h"

namespace qvox {

namespace {

std::size_t native_size(const Xstring& s) { return 2 * static_cast<std::size_t>(s.length()) + 1; }

// The longest text whose length an int can tell.
constexpr std::size_t LONGEST_TEXT = 2147483645;

std::size_t checked_length(std::size_t length) {
    if (length > LONGEST_TEXT) throw std::length_error("Xstring too long");
    return length;
}

const char* as_chars(const unsigned char* s) { return reinterpret_cast<const char*>(s); }

unsigned char* as_bytes(char* s) { return reinterpret_cast<unsigned char*>(s); }

// To a compiler that sees through these functions, char16_t and unsigned short are different
// memory: it must not move what was written as one behind what is read as the other.
template <typename To, typename From>
const To* same_units(const From* s) {
    static_assert(sizeof(To) == sizeof(From));
#if defined(__GNUC__)
    __asm__ __volatile__("" : "+r"(s) : : "memory");
#endif
    return reinterpret_cast<const To*>(s);
}

const Unit* as_units(const char16_t* s) { return same_units<Unit>(s); }

// Up to a NUL, if there is one.
std::basic_string_view<Unit, UnitTraits> as_units(std::u16string_view s) {
    return {as_units(s.data()), std::min(s.find(u'\0'), s.size())};
}

}  // namespace

const Xstring Xstring::Null;

Xstring::Xstring(const char* s) { *this = s; }

Xstring::Xstring(const unsigned char* s) { *this = as_chars(s); }

Xstring::Xstring(const Unit* s) {
    if (s == nullptr) return;
    const Unit* end = s;
    while (*end != 0 && *end != '\r') ++end;
    if (*end == 0) {
        become(s, static_cast<std::size_t>(end - s));
    } else {
        *this = WideTemp(s).get();
    }
}

Xstring::Xstring(const char16_t* s) : Xstring(as_units(s)) {}

Xstring::Xstring(std::u16string_view s) {
    *this = s;
    if (s.find(u'\r') != std::u16string_view::npos) *this = WideTemp(units).get();
}

Xstring::Xstring(const Unit* s, int length) noexcept
    : units(s != nullptr ? s : noText),
      count(s != nullptr ? std::max(length, 0) : 0),
      state(s != nullptr ? State::BULK : (length == -1 ? State::NONE : State::PLAIN)) {}

Xstring::Xstring(const Xstring& other)
    : units(other.units), count(other.count), state(other.state) {
    if (state == State::OWNED) {
        text_block::hold(units);
    } else if (state >= State::LENT) {
        copyText(other);
    }
}

// Makes this, which owns nothing, an ordinary string with a copy of a borrowed text.
void Xstring::copyText(const Xstring& other) {
    become(other.units,
           other.isBulk() ? wide_length(other.units) : static_cast<std::size_t>(other.count));
}

void Xstring::release() noexcept { text_block::drop(units); }

// Gives up the text so far for one that is this string's to have.
void Xstring::take(const Unit* text, std::size_t length, State textState) noexcept {
    if (state == State::OWNED) release();
    units = text;
    count = static_cast<int>(length);
    state = textState;
}

// Makes this an ordinary string of its text, which it takes from its lender.
void Xstring::own() {
    if (state == State::NONE) state = State::PLAIN;
    if (state >= State::LENT) copyText(*this);
}

// Makes this an ordinary string. The text may be a part of its own.
void Xstring::become(const Unit* text, std::size_t length) {
    checked_length(length);
    Unit* to = state == State::OWNED ? text_block::writable(units, length) : nullptr;
    if (to != nullptr) {
        UnitTraits::move(to, text, length);
        count = static_cast<int>(length);
    } else if (length == 0) {
        return take(noText, 0, State::PLAIN);
    } else {
        to = UnitTraits::copy(text_block::make(length), text, length);
        take(to, length, State::OWNED);
    }
    to[length] = 0;
}

// Appends to an ordinary string. The text may be a part of its own.
void Xstring::append(const Unit* text, std::size_t length) {
    own();
    if (length == 0) return;
    const auto before = static_cast<std::size_t>(count);
    const std::size_t after = checked_length(before + length);
    Unit* to = state == State::OWNED ? text_block::writable(units, after) : nullptr;
    if (to != nullptr) {
        UnitTraits::move(to + before, text, length);
        count = static_cast<int>(after);
    } else {
        const std::size_t capacity = std::max(after, std::min(2 * before, LONGEST_TEXT));
        to = UnitTraits::copy(text_block::make(capacity), units, before);
        UnitTraits::copy(to + before, text, length);
        take(to, after, State::OWNED);
    }
    to[after] = 0;
}

Xstring Xstring::fromUtf8(std::string_view utf8) {
    utf8 = utf8.substr(0, utf8.find('\0'));
    const std::size_t length = checked_length(utf8_to_units(utf8, nullptr));
    if (length == 0) return {noText, 0, State::PLAIN};
    Unit* const text = text_block::make(length);
    utf8_to_units(utf8, text);
    text[length] = 0;
    return {text, static_cast<int>(length), State::OWNED};
}

std::string Xstring::utf8() const { return units_to_utf8(units, static_cast<std::size_t>(count)); }

const char16_t* Xstring::u16_str() const noexcept { return same_units<char16_t>(units); }

std::u16string_view Xstring::view() const noexcept {
    return {u16_str(), static_cast<std::size_t>(count)};
}

char* Xstring::ascii_str(char* buffer) const {
    for (int i = 0; i < count; ++i) buffer[i] = static_cast<char>(units[i] & 0xFF);
    buffer[count] = 0;
    return buffer;
}

char* Xstring::ascii_str() const {
    return ascii_str(conversion_buffer(static_cast<std::size_t>(length()) + 1));
}

unsigned char* Xstring::euc_str(unsigned char* buffer) const {
    wide_to_native(EUC, data(), reinterpret_cast<char*>(buffer), nullptr);
    return buffer;
}

unsigned char* Xstring::euc_str() const {
    return euc_str(as_bytes(conversion_buffer(native_size(*this))));
}

unsigned char* Xstring::sjis_str(unsigned char* buffer) const {
    wide_to_native(SJIS, data(), reinterpret_cast<char*>(buffer), nullptr);
    return buffer;
}

unsigned char* Xstring::sjis_str() const {
    return sjis_str(as_bytes(conversion_buffer(native_size(*this))));
}

char* Xstring::jis_str(char* buffer) const { return wide_to_native(JIS, data(), buffer, nullptr); }

char* Xstring::jis_str() const { return jis_str(conversion_buffer(native_size(*this))); }

void* Xstring::os_str(void* buffer) const {
    return wide_to_native(osEncoding, data(), static_cast<char*>(buffer), nullptr);
}

void* Xstring::os_str() const { return os_str(conversion_buffer(native_size(*this))); }

unsigned short* Xstring::unicode_str(unsigned short* buffer) const {
    UnitTraits::copy(buffer, units, static_cast<std::size_t>(count));
    buffer[count] = 0;
    return buffer;
}

unsigned short* Xstring::unicode_str() const { return const_cast<unsigned short*>(data()); }

Xstring Xstring::substr(int start, int partLength) const {
    const std::int64_t first = std::max(start, 0);
    const std::int64_t end = std::int64_t{start} + std::max(partLength, 0);
    const std::int64_t last = std::min(end, std::int64_t{count});
    Xstring part(noText, 0, State::PLAIN);
    if (first < last) part.become(units + first, static_cast<std::size_t>(last - first));
    return part;
}

unsigned int Xstring::find(const char* pattern) const {
    if (pattern == nullptr) return 0;
    return find(Xstring(pattern).view());
}

unsigned int Xstring::find(std::u16string_view pattern) const noexcept {
    return static_cast<unsigned int>(view().find(pattern));
}

Xstring& Xstring::operator=(const char* s) {
    if (s != nullptr) *this = WideTemp(s).get();
    return *this;
}

Xstring& Xstring::operator=(const Unit* s) {
    if (s != nullptr) become(s, wide_length(s));
    return *this;
}

Xstring& Xstring::operator=(const char16_t* s) { return *this = as_units(s); }

Xstring& Xstring::operator=(std::u16string_view s) {
    const auto text = as_units(s);
    become(text.data(), text.size());
    return *this;
}

Xstring& Xstring::operator=(const Xstring& other) {
    if (this == &other) {
        if (!isNull()) own();
    } else if (other.state == State::OWNED) {
        text_block::hold(other.units);
        take(other.units, static_cast<std::size_t>(other.count), State::OWNED);
    } else if (!other.isNull() || !isNull()) {
        become(other.units, static_cast<std::size_t>(other.count));
    }
    return *this;
}

// NOLINTNEXTLINE(bugprone-exception-escape,performance-noexcept-move-constructor)
Xstring& Xstring::operator=(Xstring&& other) {
    if (other.state != State::OWNED || this == &other) return *this = std::as_const(other);
    take(other.units, static_cast<std::size_t>(other.count), State::OWNED);
    other.forget();
    return *this;
}

Xstring& Xstring::operator+=(const char* s) {
    if (s != nullptr) *this += WideTemp(s).get();
    return *this;
}

Xstring& Xstring::operator+=(Unit unit) {
    if (unit != 0) append(&unit, 1);
    return *this;
}

Xstring& Xstring::operator+=(const Unit* s) {
    if (s != nullptr) append(s, wide_length(s));
    return *this;
}

Xstring& Xstring::operator+=(const char16_t* s) { return *this += as_units(s); }

Xstring& Xstring::operator+=(std::u16string_view s) {
    const auto text = as_units(s);
    append(text.data(), text.size());
    return *this;
}

Xstring& Xstring::operator+=(const Xstring& other) {
    if (!other.isNull()) append(other.units, static_cast<std::size_t>(other.count));
    return *this;
}

bool Xstring::operator==(const char* s) const {
    if (s == nullptr || isNull()) return s == nullptr && isNull();
    return wide_narrow_compare(data(), s) == 0;
}

bool Xstring::operator==(const Xstring& other) const noexcept {
    return count == other.count &&
           (units == other.units ||
            UnitTraits::compare(units, other.units, static_cast<std::size_t>(count)) == 0);
}

bool Xstring::isText(const char16_t* s) const noexcept {
    if (s == nullptr || isNull()) return s == nullptr && isNull();
    return isText(std::u16string_view(s));
}

bool Xstring::isText(std::u16string_view s) const noexcept { return view() == s; }

Xstring operator+(const Xstring& a, const Xstring& b) {
    Xstring sum(a);
    sum += b;
    return sum;
}

std::ostream& operator<<(std::ostream& stream, const Xstring& s) {
    return stream << OsTemp(s.data()).get();
}

}  // namespace qvox
