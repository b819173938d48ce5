/// \file
/// The exceptions of the library: plain values without virtual operations, thrown by value.
#ifndef QVOX_EXCEPTION_H
#define QVOX_EXCEPTION_H

#include <qvox/export.h>
#include <qvox/xstring.h>

namespace qvox {

class Locator;

/// Base of all exceptions of the library, and the one class that a parse throws: whatever ended the
/// parse, the caller sees a plain QVOXException with that code and message.
class QVOX_API QVOXException {
public:
    /// What was wrong.
    enum Code : int {
        FILE_OPEN_ERR = 1,                ///< a file can't be opened
        FILE_WRITE_ERR = 2,               ///< writing fails
        ALLOC_ERR = 3,                    ///< memory
        FREE_ERR = 4,                     ///< a node or list is freed wrongly
        INTERNAL_ERR = 5,                 ///< the state of the library doesn't allow the call
        SYNTAX_ERR = 6,                   ///< grammar and token errors
        FORMAT_ERR = 7,                   ///< the input isn't XML
        INVALID_CHAR_ERR = 8,             ///< a bad character
        INVALID_ENTITY_REF_ERR = 9,       ///< a bad or unknown reference
        UNBALANCED_TAG_ERR = 10,          ///< start and end tag don't match
        INVALID_XML_DECL_ERR = 11,        ///< the XML declaration or a text declaration is wrong
        UNEXPECTED_EOF_ERR = 12,          ///< the input ends inside a construct
        FEATURE_NOT_RECOGNIZED_ERR = 13,  ///< a SAXNotRecognizedException
        FEATURE_NOT_SUPPORTED_ERR = 14,   ///< a SAXNotSupportedException
        DOM_ERR = 15,                     ///< a DOMException
        RANGE_ERR = 16                    ///< a RangeException
    };

    /// `message` is Shift_JIS and is copied.
    QVOXException(Code code, const char* message);

    /// What was wrong.
    Code getCode() const noexcept { return code; }
    /// The system's last error value (`errno`) at the moment of construction.
    unsigned long getSysCode() const noexcept { return sysCode; }
    /// Valid as long as the exception.
    const Xstring& getMessage() const noexcept { return message; }
    /// Class and code, as in "<SAXParseException::SYNTAX_ERR>"; null in a plain QVOXException.
    const Xstring& toString() const noexcept { return type; }

protected:
    /// For the classes below, which name themselves in toString().
    QVOXException(Code code, const char* message, const char* className, const char* codeName);

private:
    Xstring type;
    Code code;
    unsigned long sysCode;
    Xstring message;
};

/// Base of the exceptions of SAX, and the one for handlers to throw (SAX2).
class QVOX_API SAXException : public QVOXException {
public:
    /// `message` is Shift_JIS and is copied.
    SAXException(QVOXException::Code code, const char* message);

protected:
    /// For the classes below, which name themselves in toString().
    SAXException(QVOXException::Code code, const char* message, const char* className,
                 const char* codeName);
};

/// What an ErrorHandler is told (SAX2): an error or warning with its place in the document. The
/// library passes it and never throws it.
class QVOX_API SAXParseException : public SAXException {
public:
    /// `message` is Shift_JIS; it is copied, and the place too.
    SAXParseException(QVOXException::Code code, const char* message, const Locator& locator);

    /// The identifiers of the document's InputSource, also while an entity is being read.
    const Xstring& getPublicId() const noexcept { return publicId; }
    /// \copydoc getPublicId
    const Xstring& getSystemId() const noexcept { return systemId; }
    /// The line of the scanner in the file being read, counted from 1.
    int getLineNumber() const noexcept { return lineNumber; }
    /// The column in which the current token began, in display cells: a wide character has two.
    int getColumnNumber() const noexcept { return columnNumber; }

private:
    Xstring publicId;
    Xstring systemId;
    int lineNumber;
    int columnNumber;
};

/// A feature or property that no parser has (SAX2).
class QVOX_API SAXNotRecognizedException : public SAXException {
public:
    /// `message` is Shift_JIS and is copied.
    explicit SAXNotRecognizedException(const char* message);
};

/// A feature or property that can't be read or set, or not now (SAX2).
class QVOX_API SAXNotSupportedException : public SAXException {
public:
    /// `message` is Shift_JIS and is copied.
    explicit SAXNotSupportedException(const char* message);
};

/// A refused operation on a tree (DOM Level 2 Core).
class QVOX_API DOMException : public QVOXException {
public:
    /// As in DOM Level 2 Core. Operations say which they raise.
    enum Code : int {
        INDEX_SIZE_ERR = 1,
        DOMSTRING_SIZE_ERR = 2,
        HIERARCHY_REQUEST_ERR = 3,
        WRONG_DOCUMENT_ERR = 4,
        INVALID_CHARACTER_ERR = 5,
        NO_DATA_ALLOWED_ERR = 6,
        NO_MODIFICATION_ALLOWED_ERR = 7,
        NOT_FOUND_ERR = 8,
        NOT_SUPPORTED_ERR = 9,
        INUSE_ATTRIBUTE_ERR = 10,
        INVALID_STATE_ERR = 11,
        SYNTAX_ERR = 12,
        INVALID_MODIFICATION_ERR = 13,
        NAMESPACE_ERR = 14,
        INVALID_ACCESS_ERR = 15
    };

    /// `message` is Shift_JIS and is copied.
    DOMException(DOMException::Code code, const char* message);

    /// The DOM's own code; that of the base class is DOM_ERR.
    Code getCode() const noexcept { return code; }

private:
    Code code;
};

/// A refused operation on a range (DOM Level 2 Range).
class QVOX_API RangeException : public QVOXException {
public:
    /// As in DOM Level 2 Range.
    enum Code : int { BAD_BOUNDARYPOINTS_ERR = 1, INVALID_NODE_TYPE_ERR = 2 };

    /// `message` is Shift_JIS and is copied.
    RangeException(RangeException::Code code, const char* message);

    /// The range's own code; that of the base class is RANGE_ERR.
    Code getCode() const noexcept { return code; }

private:
    Code code;
};

}  // namespace qvox

#endif
