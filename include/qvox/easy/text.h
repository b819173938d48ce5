/// \file
/// Texts and errors of qvox/easy.h.
#ifndef QVOX_EASY_TEXT_H
#define QVOX_EASY_TEXT_H

#include <stdexcept>
#include <string>
#include <string_view>

#include <qvox/exception.h>
#include <qvox/report.h>
#include <qvox/xstring.h>

namespace qvox::easy {

/// What all of qvox::easy throws: what() is the message in UTF-8.
class error : public std::runtime_error {
public:
    /// An error of that code; `message` is UTF-8.
    error(QVOXException::Code code, const std::string& message, int line = 0, int column = 0)
        : std::runtime_error(message), errorCode(code), errorLine(line), errorColumn(column) {}

    /// Of the classic interface; QVOXException::DOM_ERR for a refused operation on a tree.
    QVOXException::Code code() const noexcept { return errorCode; }
    /// The place in the document, or in the entity being read, counted from 1; 0 for an error that
    /// has none. Columns count display cells, two for a wide character.
    int line() const noexcept { return errorLine; }
    /// Behind line(); 0 for an error without a place.
    int column() const noexcept { return errorColumn; }

private:
    QVOXException::Code errorCode;
    int errorLine;
    int errorColumn;
};

/// A text that goes in, made of what a caller has: UTF-8, UTF-16, or a text of the library. UTF-8
/// that is none, or has a NUL in it, raises error; UTF-16 ends at a NUL.
class text {
public:
    /// UTF-8 up to its NUL; a null pointer is the empty text.
    text(const char* utf8) : text(std::string_view(utf8 != nullptr ? utf8 : "")) {}
    /// UTF-8.
    text(const std::string& utf8) : text(std::string_view(utf8)) {}
    /// UTF-8.
    text(std::string_view utf8) : units(Xstring::fromUtf8(utf8)) {
        if (units.utf8() != utf8) throw error(QVOXException::INVALID_CHAR_ERR, "not UTF-8");
    }
#if defined(__cpp_char8_t)
    /// UTF-8 up to its NUL; a null pointer is the empty text.
    text(const char8_t* utf8) : text(reinterpret_cast<const char*>(utf8)) {}
#endif
    /// UTF-16 up to its NUL; a null pointer is the empty text.
    text(const char16_t* utf16) : text(std::u16string_view(utf16 != nullptr ? utf16 : u"")) {}
    /// UTF-16.
    text(const std::u16string& utf16) : text(std::u16string_view(utf16)) {}
    /// UTF-16.
    text(std::u16string_view utf16) { units = utf16; }
    /// The text as it is, also a null one.
    text(const Xstring& ofLibrary) : units(ofLibrary) {}

    /// For the classic interface; lives as long as this object.
    const Xstring& get() const noexcept { return units; }

private:
    Xstring units;
};

namespace detail {

// Runs `action` and raises what the library does as error.
template <typename Action>
auto checked(const Action& action) {
    try {
        return action();
    } catch (const QVOXException& exception) {
        throw error(exception.getCode(), exception.getMessage().utf8());
    }
}

}  // namespace detail

}  // namespace qvox::easy

#endif
