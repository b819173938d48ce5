#include "writer/xml_declaration.h"

#include <gtest/gtest.h>

namespace qvox {
namespace {

TEST(XmlDeclaration, DeclaredEncoding) {
    const struct {
        const char* data;
        const char* name;  // null for none
        int position;
        const char* renamed;
    } cases[] = {
        {"version=\"1.0\" encoding=\"UTF-8\"", "UTF-8", 24, "version=\"1.0\" encoding=\"N\""},
        {"encoding='UTF-8' x", "UTF-8", 10, "encoding='N' x"},
        {"encoding=\"a'b", "a", 10, "encoding=\"N'b"},
        {"encoding=\"\"", "", 10, "encoding=\"N\""},
        {"encoding''", "", 9, "encoding'N'"},
        {"encodings='a' encoding='b'", "a", 11, "encodings='N' encoding='b'"},
        {"'a' encoding", nullptr, 0, "'a' encoding encoding=\"N\""},
        {"encoding=\"a", nullptr, 0, "encoding=\"a encoding=\"N\""},
        {"encoding=\"", nullptr, 0, "encoding=\" encoding=\"N\""},
        {"Encoding=\"a\"", nullptr, 0, "Encoding=\"a\" encoding=\"N\""},
        {"", nullptr, 0, " encoding=\"N\""},
        {nullptr, nullptr, 0, " encoding=\"N\""},
    };
    for (const auto& [data, name, position, renamed] : cases) {
        const DeclaredEncoding declared = declared_encoding(data);
        EXPECT_TRUE(declared.name == name) << data;
        EXPECT_EQ(declared.position, position) << data;
        EXPECT_TRUE(with_encoding(data, declared, "N") == renamed) << data;
    }
}

TEST(XmlDeclaration, EncodingId) {
    const struct {
        Xstring name;
        EncodingId encoding;
    } cases[] = {
        {"UTF-16", UTF16},  {"utf-16", UTF16}, {"Shift_JIS", SJIS}, {"sHIFT_jis", SJIS},
        {"EUC-JP", EUC},    {"euc-jp", EUC},   {"UTF-8", SJIS},     {"ISO-2022-JP", SJIS},
        {"EUC-JP ", SJIS},  {"UTF-1", SJIS},   {"", SJIS},          {Xstring::Null, SJIS},
        {"UTF-16LE", SJIS},
    };
    for (const auto& [name, encoding] : cases) EXPECT_EQ(encoding_id(name), encoding);
}

}  // namespace
}  // namespace qvox
