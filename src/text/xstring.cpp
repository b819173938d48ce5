#include <algorithm>
#include <cstdint>
#include <ostream>
#include <stdexcept>
#include <utility>

#include <qvox/xstring.h>

#include "runtime/allocation.h"
#include "text/conversion_buffer.h"
#include "text/native_text.h"
#include "text/temporaries.h"

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

}  // namespace

const unsigned short Xstring::noText[1] = {0};
const Xstring Xstring::Null;

Xstring::Xstring(const char* s) { *this = s; }

Xstring::Xstring(const unsigned char* s) { *this = as_chars(s); }

Xstring::Xstring(const unsigned short* s) {
    if (s == nullptr) return;
    const unsigned short* end = s;
    while (*end != 0 && *end != '\r') ++end;
    if (*end == 0) {
        text.assign(s, static_cast<std::size_t>(end - s));
        bulkLength = 0;
    } else {
        *this = WideTemp(s).get();
    }
}

Xstring::Xstring(const unsigned short* s, int length)
    : bulkLength(s == nullptr ? -1 : std::max(length, 0)), bulk(s) {}

Xstring::Xstring(const Xstring& other) : bulkLength(other.isNull() ? -1 : 0) {
    if (other.bulk != nullptr) {
        text.assign(other.bulk);
    } else {
        text = other.text;
    }
}

Xstring::Xstring(Xstring&& other) noexcept
    : text(std::move(other.text)),
      bulkLength(std::exchange(other.bulkLength, -1)),
      bulk(std::exchange(other.bulk, nullptr)) {
    other.text.clear();
}

// Makes the string one that owns its text, which a bulk string takes from its lender.
void Xstring::own() {
    if (bulk != nullptr) {
        text.assign(bulk);
        bulk = nullptr;
    }
    bulkLength = 0;
}

char* Xstring::ascii_str(char* buffer) const {
    const unsigned short* units = data();
    const int count = length();
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
    const auto count = static_cast<std::size_t>(length());
    UnitTraits::copy(buffer, data(), count);
    buffer[count] = 0;
    return buffer;
}

unsigned short* Xstring::unicode_str() const { return const_cast<unsigned short*>(data()); }

Xstring Xstring::substr(int start, int count) const {
    const std::int64_t first = start < 0 ? 0 : start;
    const std::int64_t end = static_cast<std::int64_t>(start) + count;
    const std::int64_t last = end < length() ? end : length();
    Xstring result;
    result.own();
    if (count > 0 && first < last) {
        result.text.assign(data() + first, static_cast<std::size_t>(last - first));
    }
    return result;
}

unsigned int Xstring::find(const char* pattern) const {
    constexpr auto notFound = static_cast<unsigned int>(-1);
    if (pattern == nullptr) return 0;
    const WideTemp wanted(pattern);
    const std::size_t wantedLength = wide_length(wanted.get());
    if (wantedLength == 0) return 0;
    const unsigned short* units = data();
    const auto count = static_cast<std::size_t>(length());
    for (std::size_t i = 0; i + wantedLength <= count; ++i) {
        if (UnitTraits::compare(units + i, wanted.get(), wantedLength) == 0) {
            return static_cast<unsigned int>(i);
        }
    }
    return notFound;
}

Xstring& Xstring::operator=(const char* s) {
    if (s != nullptr) *this = WideTemp(s).get();
    return *this;
}

Xstring& Xstring::operator=(const unsigned short* s) {
    if (s == nullptr) return *this;
    text.assign(s, checked_length(wide_length(s)));
    bulk = nullptr;
    bulkLength = 0;
    return *this;
}

Xstring& Xstring::operator=(const Xstring& other) {
    if (this == &other) {
        if (!isNull()) own();
        return *this;
    }
    if (other.isNull() && isNull()) return *this;
    text.assign(other.data(), static_cast<std::size_t>(other.length()));
    bulk = nullptr;
    bulkLength = 0;
    return *this;
}

Xstring& Xstring::operator+=(const char* s) {
    if (s != nullptr) *this += WideTemp(s).get();
    return *this;
}

Xstring& Xstring::operator+=(unsigned short unit) {
    if (unit == 0) return *this;
    own();
    text.push_back(unit);
    return *this;
}

Xstring& Xstring::operator+=(const unsigned short* s) {
    if (s == nullptr) return *this;
    own();
    const std::size_t added = wide_length(s);
    text.append(s, checked_length(text.size() + added) - text.size());
    return *this;
}

Xstring& Xstring::operator+=(const Xstring& other) {
    if (other.isNull()) return *this;
    own();
    const auto added = static_cast<std::size_t>(other.length());
    text.append(other.data(), checked_length(text.size() + added) - text.size());
    return *this;
}

bool Xstring::operator==(const char* s) const {
    if (s == nullptr || isNull()) return s == nullptr && isNull();
    return wide_narrow_compare(data(), s) == 0;
}

bool Xstring::operator==(const Xstring& other) const noexcept {
    return length() == other.length() &&
           UnitTraits::compare(data(), other.data(), static_cast<std::size_t>(length())) == 0;
}

Xstring operator+(const Xstring& a, const Xstring& b) {
    Xstring sum(a);
    sum += b;
    return sum;
}

std::ostream& operator<<(std::ostream& stream, const Xstring& s) {
    return stream << OsTemp(s.data()).get();
}

}  // namespace qvox
