/// \file
/// Encoders for the generated documents.
#ifndef QVOX_BENCH_ENCODINGS_H
#define QVOX_BENCH_ENCODINGS_H

#include <string>
#include <string_view>

namespace bench {

enum class Encoding { Utf8, Utf16Little, Utf16Big, ShiftJis, EucJp, Iso2022Jp };

/// The name in an XML declaration.
const char* nameOf(Encoding encoding);

/// Whether it is one of Shift_JIS, EUC-JP and ISO-2022-JP, which not every contestant reads.
bool isJapaneseCode(Encoding encoding);

/// The bytes of `unit` in UTF-8: 1 or 3. Other lengths raise std::invalid_argument, because not
/// every contestant reads them.
int utf8Length(char16_t unit);

/// The kanji of JIS X 0208 level 1, in the order of their codes (that of their readings).
const std::u16string& commonKanji();

/// Appends text to bytes in one encoding. The text is ASCII and JIS X 0208, anything else raises
/// std::invalid_argument. ISO-2022-JP leaves kanji by ESC ( J, so its text must not have the two
/// characters in which JIS Roman differs from ASCII.
class Encoder {
public:
    explicit Encoder(Encoding target) : encoding(target) {}

    void append(std::u16string_view text, std::string& bytes);

private:
    void appendUnit(char16_t unit, std::string& bytes);
    void appendJis(char16_t unit, std::string& bytes);

    Encoding encoding;
    bool inKanji = false;
};

}  // namespace bench

#endif
