// Codes, names and texts of the exceptions.
#include <cerrno>
#include <sstream>

#include <gtest/gtest.h>

#include "support/recorder.h"

namespace qvox_test {
namespace {

using qvox::DOMException;
using qvox::QVOXException;
using qvox::RangeException;

class Place : public qvox::Locator {
public:
    int getColumnNumber() const override { return 7; }
    int getLineNumber() const override { return 3; }
    const qvox::Xstring& getPublicId() const override { return qvox::Xstring::Null; }
    const qvox::Xstring& getSystemId() const override { return systemId; }

private:
    const qvox::Xstring systemId = "a.xml";
};

// Calls `action` with each code from 0 on and its name.
template <typename Action>
void for_each_code(const char* names, Action action) {
    std::istringstream stream(names);
    std::string name;
    for (int code = 0; stream >> name; ++code) action(code, name);
}

TEST(Exception, NamesOfCodes) {
    for_each_code(
        "UNKNOWN_ERR FILE_OPEN_ERR FILE_WRITE_ERR ALLOC_ERR FREE_ERR INTERNAL_ERR SYNTAX_ERR "
        "FORMAT_ERR INVALID_CHAR_ERR INVALID_ENTITY_REF_ERR UNBALANCED_TAG_ERR "
        "INVALID_XML_DECL_ERR UNEXPECTED_EOF_ERR FEATURE_NOT_RECOGNIZED_ERR "
        "FEATURE_NOT_SUPPORTED_ERR DOM_ERR UNKNOWN_ERR",
        [](int number, const std::string& name) {
            const auto code = static_cast<QVOXException::Code>(number);
            const qvox::SAXException sax(code, "m");
            EXPECT_EQ(quoted(sax.toString()), "'<SAXException::" + name + ">'");
            EXPECT_EQ(sax.getCode(), number);
            const qvox::SAXParseException parse(code, "m", Place());
            EXPECT_EQ(quoted(parse.toString()), "'<SAXParseException::" + name + ">'");
        });
    for_each_code(
        "??? INDEX_SIZE_ERR DOMSTRING_SIZE_ERR HIERARCHY_REQUEST_ERR WRONG_DOCUMENT_ERR "
        "INVALID_CHARACTER_ERR NO_DATA_ALLOWED_ERR NO_MODIFICATION_ALLOWED_ERR NOT_FOUND_ERR "
        "NOT_SUPPORTED_ERR INUSE_ATTRIBUTE_ERR INVALID_STATE_ERR SYNTAX_ERR "
        "INVALID_MODIFICATION_ERR NAMESPACE_ERR INVALID_ACCESS_ERR ???",
        [](int number, const std::string& name) {
            const DOMException dom(static_cast<DOMException::Code>(number), "m");
            EXPECT_EQ(quoted(dom.toString()), "'<DOMException::" + name + ">'");
            EXPECT_EQ(dom.getCode(), number);
            EXPECT_EQ(static_cast<const QVOXException&>(dom).getCode(), 15);
        });
    for_each_code("??? BAD_BOUNDARYPOINTS_ERR INVALID_NODE_TYPE_ERR ???",
                  [](int number, const std::string& name) {
                      const RangeException range(static_cast<RangeException::Code>(number), "m");
                      EXPECT_EQ(quoted(range.toString()), "'<RangeException::" + name + ">'");
                      EXPECT_EQ(range.getCode(), number);
                      EXPECT_EQ(static_cast<const QVOXException&>(range).getCode(), 16);
                  });
}

TEST(Exception, Values) {
    char message[] = "\x88\x9F";
    errno = ENOENT;
    const QVOXException plain(QVOXException::ALLOC_ERR, message);
    errno = 0;
    message[0] = 'x';
    const QVOXException copy = plain;
    EXPECT_EQ(quoted(copy.getMessage()), "'亜'");
    EXPECT_TRUE(copy.toString().isNull());
    EXPECT_EQ(copy.getCode(), 3);
    EXPECT_EQ(copy.getSysCode(), static_cast<unsigned long>(ENOENT));

    const qvox::SAXParseException parse(QVOXException::SYNTAX_ERR, "m", Place());
    EXPECT_EQ(parse.getLineNumber(), 3);
    EXPECT_EQ(parse.getColumnNumber(), 7);
    EXPECT_TRUE(parse.getPublicId().isNull());
    EXPECT_TRUE(parse.getSystemId() == "a.xml");
    EXPECT_TRUE(parse.getMessage() == "m");

    const qvox::SAXNotRecognizedException unknown("m");
    EXPECT_EQ(unknown.getCode(), 13);
    EXPECT_EQ(quoted(unknown.toString()), "'<SAXNotRecognizedException>'");
    const qvox::SAXNotSupportedException unsupported("m");
    EXPECT_EQ(unsupported.getCode(), 14);
    EXPECT_EQ(quoted(unsupported.toString()), "'<SAXNotSupportedException>'");
}

}  // namespace
}  // namespace qvox_test
