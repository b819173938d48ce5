// Codes, names and texts of the exceptions.
#include <cerrno>

#include <gtest/gtest.h>

#include "support/recorder.h"
#include "support/tables.h"

namespace qvox_test {
namespace {

using qvox::QVOXException;

struct Place : qvox::Locator {
    int getColumnNumber() const override { return 7; }
    int getLineNumber() const override { return 3; }
    const qvox::Xstring& getPublicId() const override { return qvox::Xstring::Null; }
    const qvox::Xstring& getSystemId() const override { return systemId; }
    const qvox::Xstring systemId = "a.xml";
};

// What there is for each code from 0 on.
template <typename Class, typename... Arguments>
void expect_names(const std::string& type, int ownCode, const char* names, Arguments... arguments) {
    int code = 0;
    for (const std::string& name : parts_of(names, " ")) {
        const Class exception(static_cast<typename Class::Code>(code), "m", arguments...);
        EXPECT_EQ(quoted(exception.toString()), "'<" + type + "::" + name + ">'");
        EXPECT_EQ(exception.getCode(), code);
        EXPECT_EQ(static_cast<const QVOXException&>(exception).getCode(),
                  ownCode == 0 ? code : ownCode);
        ++code;
    }
}

TEST(Exception, NamesOfCodes) {
    const char* const names =
        "UNKNOWN_ERR FILE_OPEN_ERR FILE_WRITE_ERR ALLOC_ERR FREE_ERR INTERNAL_ERR SYNTAX_ERR "
        "FORMAT_ERR INVALID_CHAR_ERR INVALID_ENTITY_REF_ERR UNBALANCED_TAG_ERR "
        "INVALID_XML_DECL_ERR UNEXPECTED_EOF_ERR FEATURE_NOT_RECOGNIZED_ERR "
        "FEATURE_NOT_SUPPORTED_ERR DOM_ERR UNKNOWN_ERR";
    expect_names<qvox::SAXException>("SAXException", 0, names);
    expect_names<qvox::SAXParseException>("SAXParseException", 0, names, Place());
    expect_names<qvox::DOMException>(
        "DOMException", 15,
        "??? INDEX_SIZE_ERR DOMSTRING_SIZE_ERR HIERARCHY_REQUEST_ERR WRONG_DOCUMENT_ERR "
        "INVALID_CHARACTER_ERR NO_DATA_ALLOWED_ERR NO_MODIFICATION_ALLOWED_ERR NOT_FOUND_ERR "
        "NOT_SUPPORTED_ERR INUSE_ATTRIBUTE_ERR INVALID_STATE_ERR SYNTAX_ERR "
        "INVALID_MODIFICATION_ERR NAMESPACE_ERR INVALID_ACCESS_ERR ???");
    expect_names<qvox::RangeException>("RangeException", 16,
                                       "??? BAD_BOUNDARYPOINTS_ERR INVALID_NODE_TYPE_ERR ???");
}

TEST(Exception, Values) {
    char message[] = "\x88\x9F";
    errno = ENOENT;
    const QVOXException plain(QVOXException::ALLOC_ERR, message);
    errno = 0;
    message[0] = 'x';
    const QVOXException copy = plain;
    EXPECT_EQ(quoted(copy.getMessage()) + quoted(copy.toString()), "'亜'-");
    EXPECT_EQ(copy.getCode(), 3);
    EXPECT_EQ(copy.getSysCode(), static_cast<unsigned long>(ENOENT));
    const qvox::SAXParseException parse(QVOXException::SYNTAX_ERR, "m", Place());
    EXPECT_EQ(std::to_string(parse.getLineNumber()) + ':' +
                  std::to_string(parse.getColumnNumber()) + quoted(parse.getPublicId()) +
                  quoted(parse.getSystemId()) + quoted(parse.getMessage()),
              "3:7-'a.xml''m'");
    EXPECT_EQ(qvox::SAXNotRecognizedException("m").getCode(), 13);
    EXPECT_EQ(qvox::SAXNotSupportedException("m").getCode(), 14);
}

}  // namespace
}  // namespace qvox_test
