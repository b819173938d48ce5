// The overloads of write: encodings and the XML declaration, line ends, sizes in memory, failures.
#include <algorithm>
#include <cstdio>
#include <filesystem>

#include <gtest/gtest.h>

#include "support/system.h"
#include "support/tables.h"
#include "support/tree_text.h"
#include "writer/written.h"

namespace qvox_test {
namespace {

using namespace std::string_literals;

// The data of the first node.
std::string declaration_data(const qvox::Document* document) {
    const qvox::Node* const first = document->getFirstChild();
    return first == nullptr ? "" : quoted(first->getNodeValue());
}

// U+2460 is NEC's, U+FF76 a half-width kana, and U+00E9 in none of the narrow encodings.
constexpr const char16_t* TEXT = u"\u8868\u2460\uFF76\u00E9\nx";
// A document with that declaration, without one for a null.
class Declared : public Parsed {
public:
    explicit Declared(const char* data) : Parsed(std::u16string(u"<a>") + TEXT + u"</a>") {
        if (data == nullptr) return;
        qvox::Node* const declaration = document->createProcessingInstruction("xml", data);
        document->insertBefore(declaration, document->getFirstChild());
    }
};

// What a file in UTF-16, Shift_JIS or EUC-JP has to hold.
std::string file_bytes(char encoding, const std::string& declaration) {
    const std::string start = declaration + "<a>";
    const std::u16string wide(start.begin(), start.end());
    if (encoding == 'U') return utf16(u"\uFEFF" + wide + u"\u8868\u2460\uFF76\u00E9\r\nx</a>");
    return start + (encoding == 'S' ? "\x95\x5C\x87\x40\xB6?" : "\xC9\xBD\xAD\xA1\x8E\xB6?") +
           "\r\nx</a>";
}

std::string instruction(const std::string& data) { return "<?xml " + data + "?>"; }

TEST(DocumentWriter, Encodings) {
    // The declaration's data, what is asked for, the encoding's letter, and the data as written. A
    // dash is no declaration or no question, and nothing written is what was there.
    for (const Row& row : cells_of(R"~(
- => - => S  encoding='utf-16' => - => U  encoding='EUC-JP' => - => E
version="1.0" encoding="eUC-jp" standalone="yes" => - => E
version="1.0" encoding="ISO-2022-JP" => - => S  version="1.0" => - => S
encoding="EUC-JP => - => S  encoding EUC-JP => - => S  'EUC-JP' encoding => - => S
Encoding='EUC-JP' => - => S
# The quotes behind the word, of either kind.
"encoding"EUC-JP' => - => E
- => EUC-JP => E  encoding="UTF-8" => EUC-JP => E => encoding="EUC-JP"
encoding='UTF-8' x='no' => Shift_JIS => S => encoding='Shift_JIS' x='no'
encodings='a' encoding='b' => UTF-16 => U => encodings='UTF-16' encoding='b'
# The name is compared exactly, and what is asked for in another case is written so.
encoding="euc-jp" => EUC-JP => E => encoding="EUC-JP"
encoding="EUC-JP" => euc-jp => E => encoding="euc-jp"  encoding="EUC-JP" => EUC-JP => E
encoding='' => UTF-16 => U => encoding='UTF-16'  x => UTF-16 => U => x encoding="UTF-16"
encoding=" => EUC-JP => E => encoding=" encoding="EUC-JP"
)~",
                                   4)) {
        const bool isDeclared = row[0] != "-";
        Declared document(isDeclared ? row[0].c_str() : nullptr);
        const std::string before = declaration_data(document.document);
        write_as(document.document, "written.xml", row[1] == "-" ? nullptr : row[1].c_str());
        const std::string data = instruction(row[3].empty() ? row[0] : row[3]);
        EXPECT_EQ(read_file("written.xml"), file_bytes(row[2][0], isDeclared ? data : ""))
            << before;
        EXPECT_EQ(declaration_data(document.document), before);
    }
    Declared empty("encoding=\"EUC-JP\"");
    EXPECT_EQ(in_file(empty.document, ""), file_bytes('S', instruction("encoding=\"\"")));
}

// Only the first child can be the declaration.
TEST(DocumentWriter, InstructionsThatAreNoDeclaration) {
    expect_rows(R"~(
?XML'encoding="EUC-JP"' a => <?XML encoding="EUC-JP"?><a/>
!'' ?xml'encoding="EUC-JP"' a => <!----><?xml encoding="EUC-JP"?><a/>
)~",
                [](const std::string& text) {
                    const Tree tree(text);
                    EXPECT_EQ(in_file(tree.document, "Shift_JIS"), in_memory(tree.document));
                    return in_memory(tree.document);
                });
}

TEST(DocumentWriter, InMemory) {
    const char* const cases[][2] = {{"encoding=\"utf-16\"", "encoding=\"utf-16\""},
                                    {"encoding=\"UTF-8\" x=\"no\"", "encoding=\"UTF-16\" x=\"no\""},
                                    {"version=\"1.0\"", "version=\"1.0\" encoding=\"UTF-16\""},
                                    {"encoding=\"\"", "encoding=\"UTF-16\""}};
    const std::string rest = utf8(u"<a>\u8868\u2460\uFF76\u00E9\nx</a>");
    for (const auto& [data, written] : cases) {
        Declared declared(data);
        EXPECT_EQ(in_memory(declared.document), instruction(written) + rest) << data;
        EXPECT_EQ(declaration_data(declared.document), '\'' + std::string(data) + '\'');
    }
    EXPECT_EQ(in_memory(Declared(nullptr).document), rest);
    const Tree tree("?xml- a");
    EXPECT_EQ(in_memory(tree.document), "<?xml  encoding=\"UTF-16\"?><a/>");
    EXPECT_EQ(declaration_data(tree.document), "-");
}

TEST(DocumentWriter, SizesInMemory) {
    Tree tree("a");
    EXPECT_EQ(measured(tree.document), 10);
    const std::pair<int, std::u16string> cases[] = {
        // bytes and buffer
        {16, u"<a/>\0###"s}, {11, u"<a/>\0###"s}, {10, u"<a/>\0###"s},
        {9, u"<a/>####"s},   {8, u"<a/>####"s},   {5, u"<a######"s},
        {1, u"########"s},   {0, u"########"s},   {-10, u"########"s}};
    for (const auto& [length, buffer] : cases) {
        std::u16string units(8, u'#');
        int passed = length;
        tree.parser.write(tree.document, reinterpret_cast<unsigned short*>(units.data()), &passed);
        EXPECT_EQ(units, buffer) << length;
        EXPECT_EQ(passed, length);
    }
    tree.parser.write(tree.document, static_cast<unsigned short*>(nullptr), nullptr);
}

// Whatever stands where the writer's blocks end arrives whole.
TEST(DocumentWriter, LongTexts) {
    for (const std::size_t length : {4091U, 8187U, 16380U, 32766U, 70000U}) {
        for (std::size_t more = 0; more < 10; ++more) {
            const std::string x(length + more, 'x');
            const Tree tree("a('" + x + "\n&\x95\\<\n\n" + x + "')");
            const auto expected = [&x](const std::string& middle) {
                return "<a>" + x + middle + x + "</a>";
            };
            ASSERT_EQ(in_file(tree.document, "Shift_JIS"), expected("\r\n&amp;\x95\\&lt;\r\n\r\n"));
            ASSERT_EQ(in_memory(tree.document), expected("\n&amp;\xE8\xA1\xA8&lt;\n\n"));
        }
    }
}

TEST(DocumentWriter, StandardOutputKeepsItsOrder) {
    EXPECT_EQ(output_of([] {
                  std::printf("before");
                  write_as(Tree("a").document, nullptr);
                  std::printf("behind");
              }),
              "before\n<a/>\nbehind");
}

// A document of that many bytes and a little.
std::string large_tree(std::size_t size) { return "a('" + std::string(size, 'x') + "')"; }

TEST(DocumentWriter, Failures) {
    using qvox::DOMParser;
    const int nextBefore = os::next_descriptor();
    const Tree small("?xml'encoding=\"UTF-8\"' a");
    const Tree large(large_tree(100000));
    const auto expect_failure = [](const auto& action, int code, const std::string& message) {
        const Outcome outcome = observe(action);
        EXPECT_EQ(outcome.code, code) << message;
        EXPECT_EQ(outcome.message + outcome.type, message + '-');
        EXPECT_EQ(outcome.output, "QVOX error : " + message + '\n');
    };
    for (const char* const encoding : {static_cast<const char*>(nullptr), "EUC-JP", "UTF-16"}) {
        for (const std::string name : {"no/folder", "."}) {
            expect_failure([&] { write_as(small.document, name.c_str(), encoding); }, 1,
                           "file (" + name + ") cannot open");
        }
        for (const Tree* const tree : {&small, &large}) {
            if (os::FULL_DEVICE == nullptr) continue;
            expect_failure([&] { write_as(tree->document, os::FULL_DEVICE, encoding); }, 2,
                           "file write fail");
        }
        expect_failure([&] { write_as(nullptr, "new.xml", encoding); }, 2, "no document to write");
    }
    expect_failure([] { write_as(nullptr, nullptr); }, 2, "no document to write");
    expect_failure([&] { write_as(small.document, nullptr, "EUC-JP"); }, 1,
                   "file ((null)) cannot open");
    unsigned short buffer[9];
    int length = 18;
    expect_failure([&] { DOMParser().write(nullptr, buffer, &length); }, 2, "no document to write");
    expect_failure([&] { DOMParser().write(small.document, buffer, nullptr); }, 2,
                   "no length of the buffer");
    EXPECT_EQ(os::next_descriptor(), nextBefore);
    EXPECT_FALSE(std::filesystem::exists("new.xml"));
    EXPECT_EQ(declaration_data(small.document), "'encoding=\"UTF-8\"'");
    EXPECT_EQ(in_file(small.document, "EUC-JP"), "<?xml encoding=\"EUC-JP\"?><a/>");
}

TEST(DocumentWriter, StandardOutputThatTakesNothing) {
    write_file("read-only", "");
    std::FILE* const closed = std::fopen("read-only", "rb");
    for (const std::size_t size : {1U, 100000U}) {
        const Tree tree(large_tree(size));
        const os::OutputDiversion diversion(closed);
        EXPECT_EQ(raised_by([&] { write_as(tree.document, nullptr); }), "QVOX 2 file write fail");
    }
    std::fclose(closed);
    EXPECT_EQ(on_standard_output(Tree("a").document), "\n<a/>\n");
}

}  // namespace
}  // namespace qvox_test
