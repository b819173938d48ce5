// The way from a file's bytes to characters: detection, decoders, declarations, columns, line ends.
#include "parser/tables.h"
#include "support/encode.h"

namespace qvox_test {
namespace {

using namespace std::string_literals;

std::string declared(const std::string& encoding) {
    return "<?xml version='1.0' encoding='" + encoding + "'?>\n";
}

// Bytes, and the text in their root element, or the error as the ErrorHandler heard it.
void expect_texts(const std::vector<std::pair<std::string, std::string>>& cases) {
    for (const auto& [bytes, text] : cases) {
        const std::string events = events_of(bytes);
        const bool isError = events.find("error ") != std::string::npos;
        EXPECT_EQ(isError ? behind("error ", events) : behind("(a; ", in_front_of("; )", events)),
                  text)
            << bytes;
    }
}

TEST(Encodings, Detection) {
    const std::u16string document = u"<a>\u00E9</a>";
    const std::u16string xml = u"<?xml version='1.0'?>" + document;
    const std::string refused = "7 1:1 'illegal XML file'";
    expect_texts({
        {"", "7 1:1 'not XML file'"},
        {"<a>", "7 1:1 'not XML file'"},
        {utf16le(u"\uFEFF" + document), "'\u00E9'"},
        {utf16be(u"\uFEFF" + document), "'\u00E9'"},
        {utf16le(xml), "'\u00E9'"},
        {utf16be(xml), "'\u00E9'"},
        {utf16be(u"<?p?>" + document), "'\u00E9'"},
        {utf16le(document), refused},
        {utf16be(document), refused},
        {"\xFF"s + "A<a/>", refused},
        {"\xFE"s + "A<a/>", refused},
        {"\0\0<a"s, refused},
        {"\0\0\0\0"s, refused},
        {"\0\0\0<"s, "7 1:1 'UCS-4 (0) not supported'"},
        {"\0\0<\0"s, "7 1:1 'UCS-4 (1) not supported'"},
        {"\0<\0\0"s, "7 1:1 'UCS-4 (2) not supported'"},
        {"<\0\0\0"s, "7 1:1 'UCS-4 (3) not supported'"},
        {"<?xml version='1.0'?><a>\xE3\x81\x82</a>", "'あ'"},
        {"<a>\xE3\x81\x82</a>", "'あ'"},
    });
}

TEST(Encodings, Declarations) {
    const auto refused = [](const std::string& name) {
        return "11 1:31 'encoding decl not match to XML file format : doc.xml (" + name +
               ") at line 1, col " + std::to_string(32 + name.size()) + "'";
    };
    const auto wide = [](const char16_t* name) {
        return utf16le(u"\uFEFF<?xml version='1.0' encoding='" + std::u16string(name) +
                       u"'?><a>あ</a>");
    };
    expect_texts({
        {declared("utf-8") + "<a>\xE3\x81\x82</a>", "'あ'"},
        {declared("SHIFT_jis") + "<a>\x82\xA0</a>", "'あ'"},
        {declared("euc-JP") + "<a>\xA4\xA2</a>", "'あ'"},
        {declared("Iso-2022-Jp") + "<a>\x1B$B$\"\x1B(J</a>", "'あ'"},
        {wide(u"utf-16"), "'あ'"},
        {wide(u"UTF-8"), refused("UTF-8")},
        {wide(u"Shift_JIS"), refused("Shift_JIS")},
        {declared("UTF-16") + "<a/>", refused("UTF-16")},
        // The new decoder reads from the first byte behind the quote on, the old one up to it.
        {"<?xml version='1.0' encoding='EUC-JP'\xA4\xA2?><a/>",
         "6 1:40 'doc.xml : parse error (あ) at line 1, col 40'"},
        {"<?xml version='1.0' \x82\xA0", "8 1:21 'not supported UTF-8 char (82)'"},
        {declared("UTF-8") + "<a>\x82\xA0</a>", "8 2:3 'not supported UTF-8 char (82)'"},
        // A text declaration on the first line switches too, once.
        {"<a>\xE3\x81\x82<?xml encoding='EUC-JP'?>\xA4\xA2</a>", "'あ'; 'あ'"},
        {"<a><?xml encoding='EUC-JP'?><?xml encoding='UTF-8'?></a>",
         "11 1:45 'encoding decl not match to XML file format : doc.xml (UTF-8) at line 1, col "
         "51'"},
    });
}

TEST(Encodings, Utf8) {
    expect_texts({
        {"<a>\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBB\xBF\xEF\xBF\xBD\x7F\t</a>",
         utf8(u"'\u0800\uD7FF\uE000\uFEFF\uFFFD") + "\\u{7f}\\t'"},
        {"<a>\xE0\x81\x81</a>", "'A'"},
        {"<a>x\xC3\xA9</a>", "8 1:5 'not supported UTF-8 char (c3)'"},
        {"<a>\xF0\x90\x80\x80</a>", "8 1:4 'not supported UTF-8 char (f0)'"},
        {"<a>\x80</a>", "8 1:4 'not supported UTF-8 char (80)'"},
        {"<a\xE3\x41", "8 1:3 'illegal UTF-8 second char (e3)'"},
        {"<a>x\xE3", "8 1:5 'illegal UTF-8 second char (e3)'"},
        {"<a>x\xE3\xC1\x81", "8 1:5 'illegal UTF-8 second char (e3)'"},
        {"<a>x\xE3\x81\x41", "8 1:5 'illegal UTF-8 third char (e3)'"},
        {"<a>x\xE3\x81", "8 1:5 'illegal UTF-8 third char (e3)'"},
        {"<a>x\xEF\xBF\xBE", "8 1:5 'not xml char (fffe)'"},
        {"<a>x\xEF\xBF\xBF", "8 1:5 'not xml char (ffff)'"},
        {"<a>x\xE0\x80\x80", "8 1:5 'not xml char (0)'"},
        {"<a>x\0</a>"s, "8 1:5 'not xml char (0)'"},
        {"<a>x\f</a>", "8 1:5 'not xml char (c)'"},
        {"\x01<a/>", "8 1:1 'not xml char (1)'"},
        {"<a>x\x1B$B", "8 1:5 'not xml char (1b)'"},
    });
}

// The unit behind a CR adds nothing to the column.
TEST(Encodings, Utf16) {
    const std::string start = utf16be(u"\uFEFF<a>x");
    const auto reference = [](int line, int column) {
        return "9 " + std::to_string(line) +
               ":5 'illegal entity reference : doc.xml (&;) at line " + std::to_string(line) +
               ", col " + std::to_string(column) + "'";
    };
    expect_texts({
        {start + utf16be(u"\u0080\u0800\uD7FF\uE000\uFFFD\r\ry\r\n\r</a>"),
         utf8(u"'x\\u{80}\u0800\uD7FF\uE000\uFFFD\\n\\ny\\n\\n'")},
        {start + "\xD8\x3D\xDE\x00"s, "8 1:5 'not xml char (d83d)'"},
        {start + "\xFF\xFE", "8 1:5 'not xml char (fffe)'"},
        {start + "\0\0"s, "8 1:5 'not xml char (0)'"},
        {start + "\0\r\0\0"s, "8 2:5 'not xml char (0)'"},
        {start + "\0"s, "8 1:5 'unexpected EOF at utf-16 second byte'"},
        {start + "\0\r\0"s, "8 1:5 'unexpected EOF at utf-16 second byte'"},
        {start + "\0\r"s, "12 2:5 'unterminated char data : doc.xml (x\\n) at line 2, col 0'"},
        {start + utf16be(u"\rあ&;"), reference(2, 2)},
        {start + utf16be(u"\r\rあ&;"), reference(3, 2)},
        {start + utf16be(u"\r\ny&;"), reference(2, 3)},
        {start + utf16be(u"\u00E9\u0100\uFF71&;"), reference(1, 12)},
    });
}

// A pair has two columns, half-width kana one. A second byte is never markup by itself, and
// whatever the arithmetic makes of a pair is its character.
TEST(Encodings, Japanese) {
    const std::string sjis = declared("Shift_JIS") + "<a>";
    const std::string euc = declared("EUC-JP") + "<a>";
    const std::string jis = declared("ISO-2022-JP") + "<a>";
    const std::string text = "'亜ｱ　\\\\~表'";
    const std::string refused = "9 2:4 'illegal entity reference : doc.xml (&;) at line 2, col 9'";
    expect_texts({
        {sjis + "\x88\x9F\xB1\x81\x40\\~\x95\\</a>", text},
        {sjis + "x\x88\x9F\xB1&;", refused},
        {euc + "\xB0\xA1\x8E\xB1\xA1\xA1\\~\xC9\xBD</a>", text},
        {euc + "x\xB0\xA1\x8E\xB1&;", refused},
        {euc + "x\x8F\xB0\xA1</a>", "8 2:4 'not xml char (0)'"},
        {euc + "\x8E\x41\xB2\x42\xA1<\x8E<b/></a>", "'A院⊥'; (b"},
        {euc + "x\xB2", "8 2:4 'not xml char (0)'"},
        {euc + "x\xB0\x41/a>", "8 2:4 'not xml char (0)'"},
        {jis + "\x1B$B0!\x1B(J\xB1\x1B$@!!\x1B(J\\~\x1B$BI=\x1B(J</a>", text},
        {jis + "x\x1B$B0!\x1B(J\x1B$@\x1B(J\xB1&;", refused},
        {jis + "\x1B$B2 \x1B(J</a>", "'応'"},
        {jis + "x\x1B(J", "8 2:4 'illegal second KIN code (28)'"},
        {jis + "x\x1B$A", "8 2:4 'illegal third KIN code (41)'"},
        {jis + "x\x1B$B0!\x1B$B", "8 2:4 'illegal second KOUT code (24)'"},
        {jis + "x\x1B$B0!\x1B(B", "8 2:4 'illegal third KOUT code (42)'"},
        // A file may end in double-byte mode; the next one starts afresh.
        {jis + "x</a>\x1B$B", "'x'"},
        {jis + "x</a>", "'x'"},
    });
}

TEST(Encodings, LineEnds) {
    const std::u16string document = u"<a>v\r\nw\rx\n\r\ny\r\rz</a>\r";
    const std::string text = "'v\\nw\\nx\\n\\ny\\n\\nz'";
    expect_texts({
        {utf8(document), text},
        {utf16le(u"\uFEFF" + document), text},
        {declared("Shift_JIS") + utf8(document), text},
        {declared("EUC-JP") + utf8(document), text},
        {declared("ISO-2022-JP") + utf8(document), text},
        {utf8(document + u"x"), "6 8:1 'doc.xml : parse error (x) at line 8, col 1'"},
        {declared("Shift_JIS") + utf8(document + u"x"),
         "6 9:1 'doc.xml : parse error (x) at line 9, col 1'"},
        {utf16le(u"\uFEFF" + document + u"xy"),
         "6 8:0 'doc.xml : parse error (x) at line 8, col 0'"},
    });
}

}  // namespace
}  // namespace qvox_test
