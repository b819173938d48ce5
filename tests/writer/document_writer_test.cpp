// The overloads of write: encodings and the XML declaration, line ends, sizes in memory, failures.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <optional>
#include <thread>

#include <gtest/gtest.h>

#include "support/system.h"
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
    if (encoding == 'U') return "\xFF\xFE" + utf16le(wide + u"\u8868\u2460\uFF76\u00E9\r\nx</a>");
    return start + (encoding == 'S' ? "\x95\x5C\x87\x40\xB6?" : "\xC9\xBD\xAD\xA1\x8E\xB6?") +
           "\r\nx</a>";
}

std::string instruction(const std::string& data) { return "<?xml " + data + "?>"; }

TEST(DocumentWriter, Encodings) {
    const char* const same = nullptr;
    const char* const declared = "as declared";
    const struct {
        const char* data;
        const char* asked;
        char encoding;
        const char* written;  // the data
    } cases[] = {
        {nullptr, declared, 'S', same},
        {"encoding='utf-16'", declared, 'U', same},
        {"encoding='EUC-JP'", nullptr, 'E', same},
        {"version=\"1.0\" encoding=\"eUC-jp\" standalone=\"yes\"", declared, 'E', same},
        {"version=\"1.0\" encoding=\"ISO-2022-JP\"", declared, 'S', same},
        {"version=\"1.0\"", declared, 'S', same},
        {"encoding=\"EUC-JP", declared, 'S', same},
        {"encoding=\"EUC-JP ", declared, 'S', same},
        {"encoding EUC-JP", declared, 'S', same},
        {"'EUC-JP' encoding", declared, 'S', same},
        {"Encoding='EUC-JP'", declared, 'S', same},
        {"\"encoding\"EUC-JP'", declared, 'E', same},  // the quotes behind the word, of either kind
        {nullptr, "EUC-JP", 'E', same},
        {"encoding=\"UTF-8\"", "EUC-JP", 'E', "encoding=\"EUC-JP\""},
        {"encoding='UTF-8' x='no'", "Shift_JIS", 'S', "encoding='Shift_JIS' x='no'"},
        {"encodings='a' encoding='b'", "UTF-16", 'U', "encodings='UTF-16' encoding='b'"},
        // The name is compared exactly, and what is asked for in another case is written so.
        {"encoding=\"euc-jp\"", "EUC-JP", 'E', "encoding=\"EUC-JP\""},
        {"encoding=\"EUC-JP\"", "euc-jp", 'E', "encoding=\"euc-jp\""},
        {"encoding=\"EUC-JP\"", "EUC-JP", 'E', same},
        {"encoding=\"EUC-JP\"", "", 'S', "encoding=\"\""},
        {"encoding=''", "UTF-16", 'U', "encoding='UTF-16'"},
        {"", "UTF-16", 'U', " encoding=\"UTF-16\""},
        {"encoding=\"", "EUC-JP", 'E', "encoding=\" encoding=\"EUC-JP\""},
    };
    for (const auto& [data, asked, encoding, written] : cases) {
        Declared document(data);
        const std::string before = declaration_data(document.document);
        asked == declared ? document.parser.write(document.document, "written.xml")
                          : document.parser.write(document.document, "written.xml", asked);
        const char* const expected = written != same ? written : data;
        EXPECT_EQ(read_file("written.xml"),
                  file_bytes(encoding, expected == nullptr ? "" : instruction(expected)))
            << before;
        EXPECT_EQ(declaration_data(document.document), before);
    }
}

// Only the first child can be the declaration.
TEST(DocumentWriter, InstructionsThatAreNoDeclaration) {
    const char* const cases[][2] = {
        {"?XML'encoding=\"EUC-JP\"' a", "<?XML encoding=\"EUC-JP\"?><a/>"},
        {"!'' ?xml'encoding=\"EUC-JP\"' a", "<!----><?xml encoding=\"EUC-JP\"?><a/>"}};
    for (const auto& [source, text] : cases) {
        const Tree tree(source);
        EXPECT_EQ(in_file(tree.document, "Shift_JIS"), text);
        EXPECT_EQ(in_memory(tree.document), text);
    }
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
    for (const int length : {4091, 8187, 16380, 32766, 70000}) {
        for (int more = 0; more < 10; ++more) {
            const std::u16string x(static_cast<std::size_t>(length + more), u'x');
            Tree tree("a");
            const std::u16string text = x + u"\n&\u8868<\n\n" + x;
            tree["a"]->appendChild(tree.document->createTextNode(
                reinterpret_cast<const unsigned short*>(text.c_str())));
            const auto expected = [&x](const std::string& middle) {
                const std::string run(x.begin(), x.end());
                return "<a>" + run + middle + run + "</a>";
            };
            ASSERT_EQ(in_file(tree.document, "Shift_JIS"),
                      expected("\r\n&amp;\x95\x5C&lt;\r\n\r\n"));
            ASSERT_EQ(in_file(tree.document, "EUC-JP"), expected("\r\n&amp;\xC9\xBD&lt;\r\n\r\n"));
            ASSERT_EQ(
                in_file(tree.document, "UTF-16"),
                "\xFF\xFE" + utf16le(u"<a>" + x + u"\r\n&amp;\u8868&lt;\r\n\r\n" + x + u"</a>"));
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
    const Tree small("?xml'encoding=\"UTF-8\"' a");
    const Tree large(large_tree(100000));
    const struct {
        qvox::Document* document;
        const char* name;
        const char* encoding;
        int code;
        const char* message;
    } cases[] = {{small.document, "no/folder", nullptr, 1, "file (no/folder) cannot open"},
                 {small.document, ".", nullptr, 1, "file (.) cannot open"},
                 {small.document, "", "EUC-JP", 1, "file () cannot open"},
                 {small.document, nullptr, "EUC-JP", 1, "file ((null)) cannot open"},
                 {small.document, os::FULL_DEVICE, nullptr, 2, "file write fail"},
                 {large.document, os::FULL_DEVICE, nullptr, 2, "file write fail"},
                 {small.document, os::FULL_DEVICE, "EUC-JP", 2, "file write fail"},
                 {large.document, os::FULL_DEVICE, "UTF-16", 2, "file write fail"},
                 {nullptr, "new.xml", nullptr, 2, "no document to write"},
                 {nullptr, "new.xml", "UTF-16", 2, "no document to write"},
                 {nullptr, nullptr, nullptr, 2, "no document to write"}};
    const std::ptrdiff_t openBefore = os::open_descriptors();
    const auto expect_failure = [](const auto& action, int code, const std::string& message) {
        const Outcome outcome = observe(action);
        EXPECT_EQ(outcome.code, code) << message;
        EXPECT_EQ(outcome.message + outcome.type, message + '-');
        EXPECT_EQ(outcome.output, "QVOX error : " + message + '\n');
    };
    for (const auto& test : cases) {
        if (test.code == 2 && test.document != nullptr && os::FULL_DEVICE == nullptr) continue;
        expect_failure([&test] { write_as(test.document, test.name, test.encoding); }, test.code,
                       test.message);
    }
    unsigned short buffer[9];
    int length = 18;
    expect_failure([&] { DOMParser().write(nullptr, buffer, &length); }, 2, "no document to write");
    expect_failure([&] { DOMParser().write(small.document, buffer, nullptr); }, 2,
                   "no length of the buffer");
    EXPECT_EQ(os::open_descriptors(), openBefore);
    EXPECT_FALSE(std::filesystem::exists("new.xml"));
    EXPECT_EQ(declaration_data(small.document), "'encoding=\"UTF-8\"'");
    EXPECT_EQ(in_file(small.document, "EUC-JP"), "<?xml encoding=\"EUC-JP\"?><a/>");
}

// Runs `action` with standard output on a file that takes nothing.
int code_on_closed_output(const std::function<void()>& action) {
    write_file("read-only", "");
    std::FILE* const closed = std::fopen("read-only", "rb");
    int code = 0;
    try {
        const os::OutputDiversion diversion(closed);
        action();
    } catch (const qvox::QVOXException& exception) {
        code = exception.getCode();
    }
    std::fclose(closed);
    return code;
}

TEST(DocumentWriter, StandardOutputThatTakesNothing) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{100000}}) {
        EXPECT_EQ(
            code_on_closed_output([size] { write_as(Tree(large_tree(size)).document, nullptr); }),
            2);
    }
    EXPECT_EQ(on_standard_output(Tree("a").document), "\n<a/>\n");
}

// The file stays as far as it got.
TEST(DocumentWriter, DiskThatFillsUp) {
    if (!os::HAS_SIZE_LIMIT) GTEST_SKIP() << "no limit of the size of files";
    Tree tree(large_tree(1000000).c_str());
    std::optional<os::FileSizeLimit> limit(300000);
    // Standard output may be a file that is larger already.
    const int code = code_on_closed_output([&tree] { write_as(tree.document, "written.xml"); });
    limit.reset();
    EXPECT_EQ(code, 2);
    EXPECT_EQ(read_file("written.xml"), "<a>" + std::string(299997, 'x'));
}

TEST(DocumentWriter, SeveralThreadsWriteOneTree) {
    Declared declared("encoding=\"UTF-8\"");
    const auto work = [&declared](const std::string& encoding, char letter) {
        const std::string expected =
            file_bytes(letter, instruction("encoding=\"" + encoding + '"'));
        for (int i = 0; i < 300; ++i) {
            write_as(declared.document, encoding.c_str(), encoding.c_str());
            ASSERT_EQ(read_file(encoding), expected);
        }
    };
    std::thread euc(work, "EUC-JP", 'E');
    work("UTF-16", 'U');
    euc.join();
}

}  // namespace
}  // namespace qvox_test
