/// \file
/// How qvox/easy.h reads: files and bytes, decoded ahead of the library where it has to be.
#ifndef QVOX_EASY_SOURCE_H
#define QVOX_EASY_SOURCE_H

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <system_error>
#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#endif

#include <qvox/easy/text.h>
#include <qvox/parser.h>

namespace qvox::easy {

/// Whether a parse may open what the document names: its external subset and external entities. A
/// program that takes documents from strangers refuses; a reference to such an entity then stands
/// for nothing.
enum class external_files { refused, allowed };

namespace detail {

// The name of a file in messages, which on Windows is UTF-8; the name by which the library opens
// it, which there is Shift_JIS, and empty where that doesn't have it; and a new file of that name.
#ifdef _WIN32
inline std::string shown_name(const std::filesystem::path& name) {
    Xstring text;
    text = std::u16string_view(name.u16string());
    return text.utf8();
}

inline std::string library_name(const std::filesystem::path& name) {
    Xstring text;
    text = std::u16string_view(name.u16string());
    std::string result(static_cast<std::size_t>(text.length()) * 2 + 1, '\0');
    text.sjis_str(reinterpret_cast<unsigned char*>(result.data()));
    result.resize(result.find('\0'));
    return Xstring(result.c_str()).view() == text.view() ? result : std::string();
}

inline std::FILE* new_file(const std::filesystem::path& name) {
    const int file =
        _wopen(name.c_str(), _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY, _S_IREAD | _S_IWRITE);
    return file < 0 ? nullptr : _fdopen(file, "wb");
}
#else
inline std::string shown_name(const std::filesystem::path& name) { return name.string(); }
inline std::string library_name(const std::filesystem::path& name) { return name.string(); }
inline std::FILE* new_file(const std::filesystem::path& name) {
    return std::fopen(name.c_str(), "wbx");
}
#endif

inline std::string file_bytes(const std::filesystem::path& name) {
    std::ifstream file(name, std::ios::binary);
    std::string bytes;
    bool isGood = false;
    std::error_code none;
    if (file && !std::filesystem::is_directory(name, none)) {
        bytes.assign(std::istreambuf_iterator<char>(file), {});
        isGood = !file.bad();
    }
    if (!isGood) {
        throw error(QVOXException::FILE_OPEN_ERR, "file (" + shown_name(name) + ") cannot open");
    }
    return bytes;
}

inline unsigned char byte_at(std::string_view bytes, std::size_t i) {
    return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0;
}

inline bool is_same_ignoring_case(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    const auto lower = [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
    };
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (lower(a[i]) != lower(b[i])) return false;
    }
    return true;
}

// Where the encoding stands in an XML declaration: all of `encoding="name"`, and the name.
struct declared_encoding {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string_view name;
};

inline declared_encoding encoding_in(std::string_view document) {
    constexpr std::string_view blanks = " \t\r\n";
    if (document.substr(0, 5) != "<?xml") return {};
    const std::string_view declaration = document.substr(0, document.find("?>"));
    const std::size_t begin = declaration.find("encoding");
    if (begin == std::string_view::npos) return {};
    std::size_t quote = declaration.find_first_not_of(blanks, begin + 8);
    if (quote == std::string_view::npos || declaration[quote] != '=') return {};
    quote = declaration.find_first_not_of(blanks, quote + 1);
    if (quote == std::string_view::npos) return {};
    const std::size_t end = declaration.find(declaration[quote], quote + 1);
    if (end == std::string_view::npos) return {};
    return {begin, end + 1, declaration.substr(quote + 1, end - quote - 1)};
}

// A document on its way to the library.
struct source {
    enum kind { as_file, as_bytes, as_text };

    kind how = as_file;
    Xstring text;          // of as_text
    std::string declared;  // the encoding that the declaration in the text no longer names
};

// Counts as the library does.
struct position {
    int line = 1;
    int column = 1;

    void pass(char16_t unit) {
        if (unit == u'\n') {
            ++line;
            column = 1;
        } else {
            column += unit > 0xFF ? 2 : 1;
        }
    }
};

// The text in memory that the library reads: with line feeds as line ends, and no NUL.
inline Xstring memory_text(std::u16string_view units) {
    std::u16string normal;
    normal.reserve(units.size());
    position place;
    for (std::size_t i = 0; i < units.size(); ++i) {
        char16_t unit = units[i];
        if (unit == 0) {
            throw error(QVOXException::INVALID_CHAR_ERR, "not xml char (0)", place.line,
                        place.column);
        }
        if (unit == u'\r') {
            if (i + 1 < units.size() && units[i + 1] == u'\n') continue;
            unit = u'\n';
        }
        place.pass(unit);
        normal += unit;
    }
    Xstring text;
    text = std::u16string_view(normal);
    return text;
}

// Raises the error of a byte that is no part of a character.
[[noreturn]] inline void refuse_utf8(std::string_view bytes, const std::string& asRead) {
    std::size_t good = 0;
    while (good < asRead.size() && bytes[good] == asRead[good]) ++good;
    position place;
    const Xstring before = Xstring::fromUtf8(bytes.substr(0, good));
    for (const char16_t unit : before.view()) place.pass(unit);
    const bool isNul = good < bytes.size() && bytes[good] == 0;
    throw error(QVOXException::INVALID_CHAR_ERR, isNul ? "not xml char (0)" : "not UTF-8",
                place.line, place.column);
}

// The encoding's name is blotted out, so that places stay where they are.
inline source from_utf8(std::string_view bytes) {
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
    const declared_encoding encoding = encoding_in(bytes);
    const Xstring units = Xstring::fromUtf8(bytes);
    const std::string asRead = units.utf8();
    if (asRead != bytes) refuse_utf8(bytes, asRead);
    std::u16string text(units.view());
    text.replace(encoding.begin, encoding.end - encoding.begin,
                 std::u16string(encoding.end - encoding.begin, u' '));
    return {source::as_text, memory_text(text), std::string(encoding.name)};
}

inline source from_utf16(std::string_view bytes, bool isBigEndian) {
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const unsigned high = byte_at(bytes, i + (isBigEndian ? 0 : 1));
        const unsigned low = byte_at(bytes, i + (isBigEndian ? 1 : 0));
        units += static_cast<char16_t>(high << 8 | low);
    }
    if (!units.empty() && units.front() == 0xFEFF) units.erase(0, 1);
    if (bytes.size() % 2 != 0) {
        position place;
        for (const char16_t unit : units) place.pass(unit);
        throw error(QVOXException::INVALID_CHAR_ERR, "unexpected EOF at utf-16 second byte",
                    place.line, place.column);
    }
    return {source::as_text, memory_text(units), {}};
}

// Whether the library reads the UTF-8 itself: it has one and three bytes a character, and no mark.
inline bool is_narrow_utf8(std::string_view bytes) {
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0xC0 && (byte & 0xF0) != 0xE0) return false;
    }
    return bytes.substr(0, 3) != "\xEF\xBB\xBF";
}

inline bool has_surrogates(std::string_view utf16, bool isBigEndian) {
    for (std::size_t i = 0; i + 1 < utf16.size(); i += 2) {
        if ((byte_at(utf16, i + (isBigEndian ? 0 : 1)) & 0xF8) == 0xD8) return true;
    }
    return false;
}

// How to read the bytes, which may also lie in a file: then the library reads whatever it can.
inline source source_of(std::string_view bytes, source::kind otherwise) {
    const bool isInFile = otherwise == source::as_file;
    const unsigned first = static_cast<unsigned>(byte_at(bytes, 0)) << 8 | byte_at(bytes, 1);
    const unsigned second = static_cast<unsigned>(byte_at(bytes, 2)) << 8 | byte_at(bytes, 3);
    const bool isBig = first == 0xFEFF || (first == 0x003C && second == 0x003F);
    const bool isLittle = first == 0xFFFE || (first == 0x3C00 && second == 0x3F00);
    if (isBig || isLittle) {
        if (isInFile && !has_surrogates(bytes, isBig)) return {otherwise, {}, {}};
        return from_utf16(bytes, isBig);
    }
    const std::string_view body = bytes.substr(bytes.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0);
    const std::string_view name = encoding_in(body).name;
    const bool isUtf8 = name.empty() || is_same_ignoring_case(name, "UTF-8");
    if (!isUtf8 || (isInFile && is_narrow_utf8(bytes))) return {otherwise, {}, {}};
    return from_utf8(bytes);
}

// Bytes that the library reads from files only.
class temporary_file {
public:
    explicit temporary_file(std::string_view bytes) {
        std::random_device random;
        std::FILE* file = nullptr;
        for (int attempt = 0; file == nullptr && attempt < 100; ++attempt) {
            name = std::filesystem::temp_directory_path() /
                   ("qvox-" + std::to_string(random()) + '-' + std::to_string(random()) + ".xml");
            file = new_file(name);
        }
        if (file == nullptr) fail();
        std::error_code ignored;  // then it is as private as the folder
        std::filesystem::permissions(
            name, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write,
            ignored);
        const bool isWritten = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
        if (std::fclose(file) == 0 && isWritten) return;
        remove();
        fail();
    }
    temporary_file(const temporary_file&) = delete;
    temporary_file& operator=(const temporary_file&) = delete;
    ~temporary_file() { remove(); }

    std::filesystem::path name;

private:
    void remove() const {
        std::error_code ignored;
        std::filesystem::remove(name, ignored);
    }
    [[noreturn]] void fail() const {
        throw error(QVOXException::FILE_WRITE_ERR, "no temporary file can be written");
    }
};

// Runs a parse and raises its exception as error. In the message the document has the name that
// the caller knows it by; the library takes the name that it was given for Shift_JIS.
template <typename Parse>
auto parsed(const Parse& parse, const std::string& name, const std::string& knownAs) {
    takeErrorPlace();
    try {
        return parse();
    } catch (const QVOXException& exception) {
        const ErrorPlace place = takeErrorPlace();
        std::string message = exception.getMessage().utf8();
        const std::string told = Xstring(name.c_str()).utf8();
        const std::size_t at = told.empty() ? std::string::npos : message.find(told);
        if (at != std::string::npos) message.replace(at, told.size(), knownAs);
        throw error(exception.getCode(), message, place.line, place.column);
    }
}

constexpr const char* memory_name = "(memory)";

// Has the library read bytes by the name of a file that has them.
template <typename Read>
auto read_copy(std::string_view bytes, const source& from, const std::string& knownAs,
               const Read& read) {
    const temporary_file file(bytes);
    const std::string name = library_name(file.name);
    return parsed([&] { return read(name.c_str(), from.text); }, name, knownAs);
}

// Has a document read: `read` is called with the name of a file, or with a text in memory and null.
template <typename Read>
auto read_file(const std::filesystem::path& name, source& from, const Read& read) {
    std::string bytes = file_bytes(name);
    from = source_of(bytes, source::as_file);
    const std::string shown = shown_name(name);
    if (from.how == source::as_text) {
        return parsed([&] { return read(nullptr, from.text); }, memory_name, shown);
    }
    const std::string file = library_name(name);
    if (file.empty()) return read_copy(bytes, from, shown, read);
    bytes = std::string();
    return parsed([&] { return read(file.c_str(), from.text); }, file, shown);
}

template <typename Read>
auto read_bytes(std::string_view bytes, source& from, const Read& read) {
    from = source_of(bytes, source::as_bytes);
    if (from.how == source::as_text) {
        return parsed([&] { return read(nullptr, from.text); }, "", "");
    }
    return read_copy(bytes, from, memory_name, read);
}

}  // namespace detail

}  // namespace qvox::easy

#endif
