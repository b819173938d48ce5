#include "documents.h"

#include <fstream>
#include <random>
#include <stdexcept>
#include <stdlib.h>
#include <string_view>
#include <system_error>

namespace bench {
namespace {

/// The standard fixes the numbers of its generators but not of its distributions.
class Random {
public:
    unsigned below(unsigned bound) { return static_cast<unsigned>(engine() % bound); }
    unsigned between(unsigned low, unsigned high) { return low + below(high - low + 1); }

private:
    std::mt19937 engine{20000};
};

const std::vector<std::u16string_view> words = {
    u"the",     u"of",      u"and",      u"to",       u"in",       u"a",      u"is",
    u"that",    u"for",     u"it",       u"as",       u"was",      u"with",   u"be",
    u"by",      u"on",      u"not",      u"his",      u"from",     u"at",     u"which",
    u"or",      u"had",     u"this",     u"harbour",  u"morning",  u"letter", u"window",
    u"quiet",   u"between", u"remember", u"lantern",  u"evening",  u"people", u"through",
    u"station", u"never",   u"under",    u"paper",    u"mountain", u"winter", u"together",
    u"garden",  u"river",   u"because",  u"question", u"ordinary", u"weather"};

std::u16string decimal(unsigned number, std::size_t digits) {
    const std::string text = std::to_string(number);
    const std::size_t zeros = text.size() < digits ? digits - text.size() : 0;
    return std::u16string(zeros, u'0') + std::u16string(text.begin(), text.end());
}

std::u16string phrase(Random& random, unsigned count) {
    std::u16string result;
    for (unsigned i = 0; i < count; ++i) {
        if (i != 0) result += u' ';
        result += words[random.below(static_cast<unsigned>(words.size()))];
    }
    return result;
}

void appendRecord(DocumentBuilder& builder, Random& random, unsigned number) {
    builder.text(u"\n  ").openTag("item");
    builder.attribute("id", u"i" + decimal(number, 7));
    builder.attribute("group", u"g" + decimal(random.below(90), 2));
    builder.attribute("stock:place", decimal(random.below(400), 3)).closeTag();
    builder.text(u"\n    ").element("name", phrase(random, random.between(1, 3)));
    builder.text(u"\n    ").openTag("price").attribute("currency", u"JPY").closeTag();
    builder.text(decimal(random.between(80, 90000), 1)).endTag("price");
    builder.text(u"\n    ").element("stock:count", decimal(random.below(200), 1));
    builder.text(u"\n    ").element("added", u"20" + decimal(random.below(25), 2) + u"-" +
                                                 decimal(random.between(1, 12), 2) + u"-" +
                                                 decimal(random.between(1, 28), 2));
    if (random.below(4) == 0) {
        builder.text(u"\n    ").openTag("sale").attribute("until", u"soon").closeEmptyTag();
    }
    builder.text(u"\n  ").endTag("item");
}

void generateRecords(DocumentBuilder& builder, std::size_t size) {
    Random random;
    builder.openTag("catalogue");
    builder.declareNamespace("xmlns", "urn:example:catalogue");
    builder.declareNamespace("xmlns:stock", "urn:example:stock").closeTag();
    for (unsigned number = 1; builder.bytes().size() < size; ++number) {
        appendRecord(builder, random, number);
    }
    builder.text(u"\n").endTag("catalogue");
}

void appendSentence(std::u16string& text, Random& random) {
    std::u16string sentence = phrase(random, random.between(6, 24));
    sentence.front() = static_cast<char16_t>(sentence.front() - u'a' + u'A');
    text += sentence + (random.below(8) == 0 ? u"; " : u". ");
    if (random.below(40) == 0) text += u"Fish & chips. ";
    if (random.below(3) == 0) text.back() = u'\n';
}

void appendJapaneseSentence(std::u16string& text, Random& random) {
    constexpr unsigned hiraganaCount = 83;
    constexpr unsigned katakanaCount = 86;
    const auto kanji = [&random] {
        // Squaring makes some kanji much more common than others, as they are in any text.
        constexpr unsigned range = 4096;
        const std::u16string& all = commonKanji();
        const std::size_t draw = random.below(range);
        return all[draw * draw * all.size() / (range * range)];
    };
    const auto kana = [&random](char16_t first, unsigned count, unsigned length) {
        std::u16string run;
        for (unsigned i = 0; i < length; ++i) {
            run += static_cast<char16_t>(first + random.below(count));
        }
        return run;
    };
    const unsigned clauses = random.between(3, 9);
    for (unsigned clause = 0; clause < clauses; ++clause) {
        for (unsigned left = random.between(1, 3); left > 0; --left) text += kanji();
        text += kana(u'\u3041', hiraganaCount, random.between(1, 5));
        if (random.below(5) == 0) text += kana(u'\u30A1', katakanaCount, 3) + u"\u30FC";
        if (random.below(20) == 0) text += decimal(random.below(2100), 1) + u"\u5E74";
        if (random.below(4) == 0 && clause + 1 < clauses) text += u'\u3001';
    }
    text += u'\u3002';
    if (random.below(6) == 0) text += u'\n';
}

using AppendSentence = void (*)(std::u16string& text, Random& random);

void generateChapters(DocumentBuilder& builder, std::size_t size, AppendSentence appendOne,
                      std::size_t longestParagraph) {
    Random random;
    const auto paragraph = [&random, appendOne](std::size_t length) {
        std::u16string text;
        while (text.size() < length) appendOne(text, random);
        return text;
    };
    builder.openTag("book").closeTag();
    for (unsigned chapter = 1; builder.bytes().size() < size; ++chapter) {
        builder.text(u"\n").openTag("chapter").attribute("number", decimal(chapter, 1)).closeTag();
        builder.text(u"\n").element("title", paragraph(10));
        for (unsigned i = 0; i < 8 && builder.bytes().size() < size; ++i) {
            // Most paragraphs are far shorter than the longest.
            const std::size_t length = longestParagraph / random.between(1, 16);
            builder.text(u"\n").element("p", paragraph(length));
        }
        builder.text(u"\n").endTag("chapter");
    }
    builder.text(u"\n").endTag("book");
}

void generateProse(DocumentBuilder& builder, std::size_t size) {
    generateChapters(builder, size, appendSentence, 16000);
}

void generateJapanese(DocumentBuilder& builder, std::size_t size) {
    generateChapters(builder, size, appendJapaneseSentence, 4000);
}

}  // namespace

const std::vector<DocumentKind>& documentKinds() {
    static const std::vector<DocumentKind> kinds = {
        {"records", Encoding::Utf8, generateRecords},
        {"prose", Encoding::Utf8, generateProse},
        {"japanese-utf-8", Encoding::Utf8, generateJapanese},
        {"japanese-utf-16", Encoding::Utf16, generateJapanese},
        {"japanese-shift_jis", Encoding::ShiftJis, generateJapanese},
        {"japanese-euc-jp", Encoding::EucJp, generateJapanese},
        {"japanese-iso-2022-jp", Encoding::Iso2022Jp, generateJapanese},
    };
    return kinds;
}

Document writeDocument(const DocumentKind& kind, std::size_t size,
                       const std::filesystem::path& directory) {
    DocumentBuilder builder(kind.encoding);
    kind.generate(builder, size);
    const std::string& bytes = builder.bytes();
    const std::filesystem::path path =
        directory / (kind.name + "-" + std::to_string(size) + ".xml");
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path.string());
    return {kind, path, bytes.size(), builder.contents()};
}

TemporaryDirectory::TemporaryDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "qvox-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("cannot make the directory " + pattern);
    }
    directory = pattern;
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(directory, ignored);
}

}  // namespace bench
