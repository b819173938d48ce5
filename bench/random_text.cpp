#include "random_text.h"

#include <string_view>
#include <vector>

#include "encodings.h"

namespace bench {
namespace {

const std::vector<std::u16string_view> words = {
    u"the",     u"of",      u"and",      u"to",       u"in",       u"a",      u"is",
    u"that",    u"for",     u"it",       u"as",       u"was",      u"with",   u"be",
    u"by",      u"on",      u"not",      u"his",      u"from",     u"at",     u"which",
    u"or",      u"had",     u"this",     u"harbour",  u"morning",  u"letter", u"window",
    u"quiet",   u"between", u"remember", u"lantern",  u"evening",  u"people", u"through",
    u"station", u"never",   u"under",    u"paper",    u"mountain", u"winter", u"together",
    u"garden",  u"river",   u"because",  u"question", u"ordinary", u"weather"};

}  // namespace

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

}  // namespace bench
