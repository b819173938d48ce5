// The overloads of write: encodings and the XML declaration, line ends, sizes in memory, failures.
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <iterator>
#include <stdio_ext.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

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
const std::string UTF16_TEXT = utf16le(u"\u8868\u2460\uFF76\u00E9\r\nx");
const std::string SJIS_TEXT = "\x95\x5C\x87\x40\xB6?\r\nx";
const std::string EUC_TEXT = "\xC9\xBD\xAD\xA1\x8E\xB6?\r\nx";

// A document with that declaration, without one for a null.
class Declared : public Parsed {
public:
    explicit Declared(const char* data) : Parsed(std::u16string(u"<a>") + TEXT + u"</a>") {
        if (data == nullptr) return;
        qvox::Node* const declaration = document->createProcessingInstruction("xml", data);
        document->insertBefore(declaration, document->getFirstChild());
    }
};

std::string wide(const std::string& ascii) {
    return utf16le(std::u16string(ascii.begin(), ascii.end()));
}

// What a file in UTF-16, Shift_JIS or EUC-JP has to hold.
std::string file_bytes(char encoding, const std::string& declaration) {
    const std::string start = declaration + "<a>";
    switch (encoding) {
        case 'U': return "\xFF\xFE" + wide(start) + UTF16_TEXT + wide("</a>");
        case 'S': return start + SJIS_TEXT + "</a>";
        default: return start + EUC_TEXT + "</a>";
    }
}

std::string instruction(const std::string& data) { return "<?xml " + data + "?>"; }

TEST(DocumentWriter, EncodingThatIsDeclared) {
    const struct {
        const char* data;
        char encoding;
    } cases[] = {
        {nullptr, 'S'},
        {"version=\"1.0\" encoding=\"UTF-16\"", 'U'},
        {"encoding='utf-16'", 'U'},
        {"version=\"1.0\" encoding=\"Shift_JIS\"", 'S'},
        {"version=\"1.0\" encoding=\"EUC-JP\" standalone=\"yes\"", 'E'},
        {"version=\"1.0\" encoding=\"eUC-jp\"", 'E'},
        {"version=\"1.0\" encoding=\"UTF-8\"", 'S'},
        {"version=\"1.0\" encoding=\"ISO-2022-JP\"", 'S'},
        {"version=\"1.0\"", 'S'},
        {"", 'S'},
        {"encoding=\"\"", 'S'},
        {"encoding=\"EUC-JP", 'S'},
        {"encoding EUC-JP", 'S'},
        {"\"encoding\"EUC-JP'", 'E'},  // the quotes behind the word count, of either kind
    };
    for (const auto& [data, encoding] : cases) {
        Declared declared(data);
        EXPECT_EQ(in_file(declared.document),
                  file_bytes(encoding, data == nullptr ? "" : instruction(data)))
            << (data == nullptr ? "none" : data);
    }
}

TEST(DocumentWriter, EncodingThatIsAskedFor) {
    const struct {
        const char* data;
        const char* asked;
        char encoding;
        const char* written;  // the data; null for the same
    } cases[] = {
        {nullptr, "EUC-JP", 'E', nullptr},
        {nullptr, "UTF-16", 'U', nullptr},
        {"version=\"1.0\" encoding=\"UTF-8\"", "EUC-JP", 'E',
         "version=\"1.0\" encoding=\"EUC-JP\""},
        {"encoding='UTF-8' standalone='no'", "Shift_JIS", 'S',
         "encoding='Shift_JIS' standalone='no'"},
        // The name is compared exactly, and what is asked for in another case is written so.
        {"encoding=\"euc-jp\"", "EUC-JP", 'E', "encoding=\"EUC-JP\""},
        {"encoding=\"EUC-JP\"", "euc-jp", 'E', "encoding=\"euc-jp\""},
        {"encoding=\"EUC-JP\"", "EUC-JP", 'E', nullptr},
        {"encoding=\"EUC-JP\"", "UTF-8", 'S', "encoding=\"UTF-8\""},
        {"encoding=\"EUC-JP\"", "", 'S', "encoding=\"\""},
        {"encoding=\"\"", "UTF-16", 'U', "encoding=\"UTF-16\""},
        {"version=\"1.0\" standalone=\"yes\"", "EUC-JP", 'E',
         "version=\"1.0\" standalone=\"yes\" encoding=\"EUC-JP\""},
        {"", "UTF-16", 'U', " encoding=\"UTF-16\""},
        {"encoding=\"open", "EUC-JP", 'E', "encoding=\"open encoding=\"EUC-JP\""},
    };
    for (const auto& [data, asked, encoding, written] : cases) {
        Declared declared(data);
        const std::string before = declaration_data(declared.document);
        const char* const expected = written != nullptr ? written : data;
        EXPECT_EQ(in_file(declared.document, asked),
                  file_bytes(encoding, expected == nullptr ? "" : instruction(expected)))
            << asked;
        EXPECT_EQ(declaration_data(declared.document), before);
    }
}

TEST(DocumentWriter, NullNameOfAnEncodingIsTheDeclaredOne) {
    Declared declared("encoding='EUC-JP'");
    declared.parser.write(declared.document, "written.xml", nullptr);
    EXPECT_EQ(read_file("written.xml"), file_bytes('E', instruction("encoding='EUC-JP'")));
}

// Only the first child can be the declaration.
TEST(DocumentWriter, InstructionsThatAreNoDeclaration) {
    for (const char* const text :
         {"<?XML encoding=\"EUC-JP\"?><a/>", "<!----><?xml encoding=\"EUC-JP\"?><a/>"}) {
        const std::string tree =
            text[2] == 'X' ? "?XML'encoding=\"EUC-JP\"' a" : "!'' ?xml'encoding=\"EUC-JP\"' a";
        const Tree made(tree.c_str());
        EXPECT_EQ(in_file(made.document, "Shift_JIS"), text);
        EXPECT_EQ(in_file(made.document, "UTF-16"), "\xFF\xFE" + wide(text));
        EXPECT_EQ(in_memory(made.document), text);
    }
}

TEST(DocumentWriter, InMemory) {
    const std::string rest = utf8(u"<a>\u8868\u2460\uFF76\u00E9\nx</a>");
    const struct {
        const char* data;
        const char* written;
    } cases[] = {
        {"version=\"1.0\" encoding=\"UTF-16\"", "version=\"1.0\" encoding=\"UTF-16\""},
        {"version=\"1.0\" encoding=\"utf-16\"", "version=\"1.0\" encoding=\"utf-16\""},
        {"version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"",
         "version=\"1.0\" encoding=\"UTF-16\" standalone=\"no\""},
        {"version=\"1.0\"", "version=\"1.0\" encoding=\"UTF-16\""},
        {"version=\"1.0\" encoding=\"\"", "version=\"1.0\" encoding=\"UTF-16\""},
    };
    for (const auto& [data, written] : cases) {
        Declared declared(data);
        EXPECT_EQ(in_memory(declared.document), instruction(written) + rest) << data;
        EXPECT_EQ(declaration_data(declared.document), '\'' + std::string(data) + '\'');
    }
    EXPECT_EQ(in_memory(Declared(nullptr).document), rest);

    Declared declared(nullptr);
    qvox::Node* const empty = declared.document->createProcessingInstruction("xml", {});
    declared.document->insertBefore(empty, declared.document->getFirstChild());
    EXPECT_EQ(in_memory(declared.document), instruction(" encoding=\"UTF-16\"") + rest);
    EXPECT_TRUE(empty->getNodeValue().isNull());
}

TEST(DocumentWriter, SizesInMemory) {
    Tree tree("a");
    EXPECT_EQ(measured(tree.document), 10);
    const struct {
        int length;  // in bytes
        std::u16string buffer;
    } cases[] = {
        {16, u"<a/>\0###"s}, {11, u"<a/>\0###"s}, {10, u"<a/>\0###"s},
        {9, u"<a/>####"s},   {8, u"<a/>####"s},   {5, u"<a######"s},
        {1, u"########"s},   {0, u"########"s},   {-10, u"########"s},
    };
    for (const auto& [length, buffer] : cases) {
        unsigned short units[8];
        std::fill(std::begin(units), std::end(units), '#');
        int passed = length;
        tree.parser.write(tree.document, units, &passed);
        EXPECT_EQ(std::u16string(std::begin(units), std::end(units)), buffer) << length;
        EXPECT_EQ(passed, length);
    }
    tree.parser.write(tree.document, static_cast<unsigned short*>(nullptr), nullptr);
}

// Whatever stands where the writer's blocks end arrives whole.
TEST(DocumentWriter, LongTexts) {
    const std::u16string tail = u"\n&\u8868<\n\n";
    for (const int length : {4091, 8187, 16380, 16384, 32766, 70000}) {
        for (int more = 0; more < 10; ++more) {
            const std::u16string x(static_cast<std::size_t>(length + more), u'x');
            Tree tree("a");
            const std::u16string text = x + tail + x;
            tree["a"]->appendChild(tree.document->createTextNode(
                reinterpret_cast<const unsigned short*>(text.c_str())));
            const std::string run(x.begin(), x.end());
            const auto expected = [&](const char* kanji) {
                return "<a>" + run + "\r\n&amp;" + kanji + "&lt;\r\n\r\n" + run + "</a>";
            };
            ASSERT_EQ(in_file(tree.document, "Shift_JIS"), expected("\x95\x5C")) << x.size();
            ASSERT_EQ(in_file(tree.document, "EUC-JP"), expected("\xC9\xBD")) << x.size();
            ASSERT_EQ(
                in_file(tree.document, "UTF-16"),
                "\xFF\xFE" + utf16le(u"<a>" + x + u"\r\n&amp;\u8868&lt;\r\n\r\n" + x + u"</a>"))
                << x.size();
            ASSERT_EQ(in_memory(tree.document),
                      "<a>" + run + "\n&amp;\xE8\xA1\xA8&lt;\n\n" + run + "</a>");
        }
    }
}

TEST(DocumentWriter, StandardOutputKeepsItsOrder) {
    Tree tree("a");
    EXPECT_EQ(output_of([&tree] {
                  std::printf("before");
                  tree.parser.write(tree.document, static_cast<const char*>(nullptr));
                  std::printf("behind");
              }),
              "before\n<a/>\nbehind");
}

// A document of that many bytes and a little.
std::string large_tree(std::size_t size) { return "a('" + std::string(size, 'x') + "')"; }

int open_files() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<int>(std::distance(begin(files), end(files)));
}

TEST(DocumentWriter, Failures) {
    using qvox::DOMParser;
    const Tree small("?xml'encoding=\"UTF-8\"' a");
    const Tree large(large_tree(100000).c_str());
    unsigned short buffer[9];
    int length = 18;
    const char* const noName = nullptr;
    const struct {
        std::function<void(DOMParser&)> write;
        int code;
        const char* message;
    } cases[] = {
        {[&](DOMParser& p) { p.write(small.document, "no/such/folder"); }, 1,
         "file (no/such/folder) cannot open"},
        {[&](DOMParser& p) { p.write(small.document, "."); }, 1, "file (.) cannot open"},
        {[&](DOMParser& p) { p.write(small.document, "", "EUC-JP"); }, 1, "file () cannot open"},
        {[&](DOMParser& p) { p.write(small.document, noName, "EUC-JP"); }, 1,
         "file ((null)) cannot open"},
        {[&](DOMParser& p) { p.write(small.document, "/dev/full"); }, 2, "file write fail"},
        {[&](DOMParser& p) { p.write(large.document, "/dev/full"); }, 2, "file write fail"},
        {[&](DOMParser& p) { p.write(small.document, "/dev/full", "EUC-JP"); }, 2,
         "file write fail"},
        {[&](DOMParser& p) { p.write(large.document, "/dev/full", "UTF-16"); }, 2,
         "file write fail"},
        {[&](DOMParser& p) { p.write(nullptr, "new.xml"); }, 2, "no document to write"},
        {[&](DOMParser& p) { p.write(nullptr, "new.xml", "UTF-16"); }, 2, "no document to write"},
        {[&](DOMParser& p) { p.write(nullptr, noName); }, 2, "no document to write"},
        {[&](DOMParser& p) { p.write(nullptr, buffer, &length); }, 2, "no document to write"},
        {[&](DOMParser& p) { p.write(small.document, buffer, nullptr); }, 2,
         "no length of the buffer"},
    };
    const int openBefore = open_files();
    for (const auto& [write, code, message] : cases) {
        DOMParser parser;
        const Outcome outcome = observe([&, &action = write] { action(parser); });
        EXPECT_EQ(outcome.code, code) << message;
        EXPECT_EQ(outcome.message, message);
        EXPECT_EQ(outcome.type, "-");
        EXPECT_EQ(outcome.output, "QVOX error : " + std::string(message) + '\n');
    }
    EXPECT_EQ(open_files(), openBefore);
    EXPECT_FALSE(std::filesystem::exists("new.xml"));
    EXPECT_EQ(declaration_data(small.document), "'encoding=\"UTF-8\"'");
    EXPECT_EQ(in_file(small.document, "EUC-JP"), "<?xml encoding=\"EUC-JP\"?><a/>");
}

// Runs `action` with standard output on a device that takes nothing.
int code_on_full_output(const std::function<void()>& action) {
    std::fflush(stdout);
    const int own = dup(STDOUT_FILENO);
    const int full = open("/dev/full", O_WRONLY);
    dup2(full, STDOUT_FILENO);
    int code = 0;
    try {
        action();
    } catch (const qvox::QVOXException& exception) {
        code = exception.getCode();
    }
    __fpurge(stdout);
    std::clearerr(stdout);
    dup2(own, STDOUT_FILENO);
    close(own);
    close(full);
    return code;
}

TEST(DocumentWriter, StandardOutputThatIsFull) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{100000}}) {
        Tree tree(large_tree(size).c_str());
        EXPECT_EQ(code_on_full_output([&tree] {
                      tree.parser.write(tree.document, static_cast<const char*>(nullptr));
                  }),
                  2);
    }
    EXPECT_EQ(on_standard_output(Tree("a").document), "\n<a/>\n");
}

// The file stays as far as it got.
TEST(DocumentWriter, DiskThatFillsUp) {
    Tree tree(large_tree(1000000).c_str());
    rlimit before;
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit tight = {300000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &tight);
    // Standard output may be a file that is larger already.
    const int code =
        code_on_full_output([&tree] { tree.parser.write(tree.document, "written.xml"); });
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(code, 2);
    EXPECT_EQ(read_file("written.xml"), "<a>" + std::string(299997, 'x'));
}

TEST(DocumentWriter, SeveralThreadsWriteOneTree) {
    Declared declared("encoding=\"UTF-8\"");
    const auto work = [&declared](const char* name, const char* encoding, char letter) {
        qvox::DOMParser parser;
        const std::string expected =
            file_bytes(letter, instruction("encoding=\"" + std::string(encoding) + '"'));
        for (int i = 0; i < 300; ++i) {
            parser.write(declared.document, name, encoding);
            ASSERT_EQ(read_file(name), expected);
        }
    };
    std::thread euc(work, "thread-1.xml", "EUC-JP", 'E');
    std::thread utf16(work, "thread-2.xml", "UTF-16", 'U');
    euc.join();
    utf16.join();
}

}  // namespace
}  // namespace qvox_test
