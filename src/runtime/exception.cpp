#include <string>

#include <qvox/exception.h>
#include <qvox/sax.h>

#include "platform/system.h"

namespace qvox {

namespace {

struct CodeName {
    int code;
    const char* name;
};

constexpr CodeName CODE_NAMES[] = {
    {QVOXException::FILE_OPEN_ERR, "FILE_OPEN_ERR"},
    {QVOXException::FILE_WRITE_ERR, "FILE_WRITE_ERR"},
    {QVOXException::ALLOC_ERR, "ALLOC_ERR"},
    {QVOXException::FREE_ERR, "FREE_ERR"},
    {QVOXException::INTERNAL_ERR, "INTERNAL_ERR"},
    {QVOXException::SYNTAX_ERR, "SYNTAX_ERR"},
    {QVOXException::FORMAT_ERR, "FORMAT_ERR"},
    {QVOXException::INVALID_CHAR_ERR, "INVALID_CHAR_ERR"},
    {QVOXException::INVALID_ENTITY_REF_ERR, "INVALID_ENTITY_REF_ERR"},
    {QVOXException::UNBALANCED_TAG_ERR, "UNBALANCED_TAG_ERR"},
    {QVOXException::INVALID_XML_DECL_ERR, "INVALID_XML_DECL_ERR"},
    {QVOXException::UNEXPECTED_EOF_ERR, "UNEXPECTED_EOF_ERR"},
    {QVOXException::FEATURE_NOT_RECOGNIZED_ERR, "FEATURE_NOT_RECOGNIZED_ERR"},
    {QVOXException::FEATURE_NOT_SUPPORTED_ERR, "FEATURE_NOT_SUPPORTED_ERR"},
    {QVOXException::DOM_ERR, "DOM_ERR"},
};

constexpr CodeName DOM_CODE_NAMES[] = {
    {DOMException::INDEX_SIZE_ERR, "INDEX_SIZE_ERR"},
    {DOMException::DOMSTRING_SIZE_ERR, "DOMSTRING_SIZE_ERR"},
    {DOMException::HIERARCHY_REQUEST_ERR, "HIERARCHY_REQUEST_ERR"},
    {DOMException::WRONG_DOCUMENT_ERR, "WRONG_DOCUMENT_ERR"},
    {DOMException::INVALID_CHARACTER_ERR, "INVALID_CHARACTER_ERR"},
    {DOMException::NO_DATA_ALLOWED_ERR, "NO_DATA_ALLOWED_ERR"},
    {DOMException::NO_MODIFICATION_ALLOWED_ERR, "NO_MODIFICATION_ALLOWED_ERR"},
    {DOMException::NOT_FOUND_ERR, "NOT_FOUND_ERR"},
    {DOMException::NOT_SUPPORTED_ERR, "NOT_SUPPORTED_ERR"},
    {DOMException::INUSE_ATTRIBUTE_ERR, "INUSE_ATTRIBUTE_ERR"},
    {DOMException::INVALID_STATE_ERR, "INVALID_STATE_ERR"},
    {DOMException::SYNTAX_ERR, "SYNTAX_ERR"},
    {DOMException::INVALID_MODIFICATION_ERR, "INVALID_MODIFICATION_ERR"},
    {DOMException::NAMESPACE_ERR, "NAMESPACE_ERR"},
    {DOMException::INVALID_ACCESS_ERR, "INVALID_ACCESS_ERR"},
};

constexpr CodeName RANGE_CODE_NAMES[] = {
    {RangeException::BAD_BOUNDARYPOINTS_ERR, "BAD_BOUNDARYPOINTS_ERR"},
    {RangeException::INVALID_NODE_TYPE_ERR, "INVALID_NODE_TYPE_ERR"},
};

template <std::size_t count>
const char* name_in(const CodeName (&names)[count], int code, const char* otherwise) {
    for (const CodeName& entry : names) {
        if (entry.code == code) return entry.name;
    }
    return otherwise;
}

const char* code_name(QVOXException::Code code) { return name_in(CODE_NAMES, code, "UNKNOWN_ERR"); }

const char* code_name(DOMException::Code code) { return name_in(DOM_CODE_NAMES, code, "???"); }

const char* code_name(RangeException::Code code) { return name_in(RANGE_CODE_NAMES, code, "???"); }

std::string type_text(const char* className, const char* codeName) {
    std::string text("<");
    text += className;
    if (codeName != nullptr) text.append("::").append(codeName);
    return text += '>';
}

}  // namespace

QVOXException::QVOXException(Code exceptionCode, const char* messageText)
    : code(exceptionCode), sysCode(last_system_error()), message(messageText) {}

QVOXException::QVOXException(Code exceptionCode, const char* messageText, const char* className,
                             const char* codeName)
    : QVOXException(exceptionCode, messageText) {
    type = type_text(className, codeName).c_str();
}

SAXException::SAXException(QVOXException::Code saxCode, const char* saxMessage)
    : QVOXException(saxCode, saxMessage, "SAXException", code_name(saxCode)) {}

SAXException::SAXException(QVOXException::Code saxCode, const char* saxMessage,
                           const char* className, const char* codeName)
    : QVOXException(saxCode, saxMessage, className, codeName) {}

SAXParseException::SAXParseException(QVOXException::Code saxCode, const char* saxMessage,
                                     const Locator& locator)
    : SAXException(saxCode, saxMessage, "SAXParseException", code_name(saxCode)),
      publicId(locator.getPublicId()),
      systemId(locator.getSystemId()),
      lineNumber(locator.getLineNumber()),
      columnNumber(locator.getColumnNumber()) {}

SAXNotRecognizedException::SAXNotRecognizedException(const char* saxMessage)
    : SAXException(FEATURE_NOT_RECOGNIZED_ERR, saxMessage, "SAXNotRecognizedException", nullptr) {}

SAXNotSupportedException::SAXNotSupportedException(const char* saxMessage)
    : SAXException(FEATURE_NOT_SUPPORTED_ERR, saxMessage, "SAXNotSupportedException", nullptr) {}

DOMException::DOMException(DOMException::Code domCode, const char* domMessage)
    : QVOXException(DOM_ERR, domMessage, "DOMException", code_name(domCode)), code(domCode) {}

RangeException::RangeException(RangeException::Code rangeCode, const char* rangeMessage)
    : QVOXException(RANGE_ERR, rangeMessage, "RangeException", code_name(rangeCode)),
      code(rangeCode) {}

}  // namespace qvox
