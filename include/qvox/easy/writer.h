/// \file
/// How qvox/easy.h writes: a tree as the bytes of a document.
#ifndef QVOX_EASY_WRITER_H
#define QVOX_EASY_WRITER_H

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <qvox/dom.h>
#include <qvox/easy/source.h>
#include <qvox/easy/text.h>
#include <qvox/parser.h>

namespace qvox::easy::detail {

enum class charset { utf8, utf16, sjis, euc, jis };

struct encoding {
    const char* name;  // as it is declared
    const char* key;   // without dashes, in lower case
    charset characters;
};

inline const encoding& encoding_named(std::string_view name) {
    static constexpr encoding encodings[] = {
        {"UTF-8", "utf8", charset::utf8},         {"UTF-16", "utf16", charset::utf16},
        {"Shift_JIS", "shiftjis", charset::sjis}, {"Shift_JIS", "sjis", charset::sjis},
        {"EUC-JP", "eucjp", charset::euc},        {"ISO-2022-JP", "iso2022jp", charset::jis}};
    std::string key;
    for (const char c : name) {
        if (c != '-' && c != '_') key += c;
    }
    for (const encoding& candidate : encodings) {
        if (is_same_ignoring_case(key, candidate.key)) return candidate;
    }
    throw error(QVOXException::FILE_WRITE_ERR,
                "encoding (" + std::string(name) + ") is not one that can be written");
}

// Characters as bytes of one encoding, one after the other.
class encoder {
public:
    explicit encoder(charset characters) : target(characters) {
        if (target == charset::utf16) put_unit(0xFEFF);
    }

    // Whether there is a code for the character, which then has been written.
    bool put(char32_t character) {
        switch (target) {
            case charset::utf8: put_utf8(character); return true;
            case charset::utf16: put_utf16(character); return true;
            default: return character < 0x80 ? put_ascii(character) : put_japanese(character);
        }
    }

    void put(std::string_view ascii) {
        for (const char c : ascii) put(static_cast<char32_t>(c));
    }

    std::string finish() {
        if (isKanji) put_ascii(0);
        return std::move(bytes);
    }

private:
    struct code {
        bool isKnown = false;
        unsigned char size = 0;  // 0 where there is none
        char bytes[2] = {};
    };

    void put_byte(char32_t byte) { bytes += static_cast<char>(byte & 0xFF); }

    void put_unit(char32_t unit) {
        put_byte(unit);
        put_byte(unit >> 8);
    }

    void put_utf16(char32_t c) {
        if (c < 0x10000) return put_unit(c);
        put_unit(0xD7C0 + (c >> 10));
        put_unit(0xDC00 | (c & 0x3FF));
    }

    void put_utf8(char32_t c) {
        static constexpr unsigned char lead[] = {0x00, 0xC0, 0xE0, 0xF0};
        const unsigned rest = c < 0x80 ? 0 : c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
        put_byte(lead[rest] | c >> 6 * rest);
        for (unsigned i = rest; i-- > 0;) put_byte(0x80 | (c >> 6 * i & 0x3F));
    }

    // 0 only ends a run of kanji.
    bool put_ascii(char32_t c) {
        if (isKanji) bytes += "\x1B(J";
        isKanji = false;
        if (c != 0) put_byte(c);
        return true;
    }

    bool put_japanese(char32_t c) {
        if (c > 0xFFFF) return false;
        const code& known = code_of(static_cast<char16_t>(c));
        if (known.size == 0) return false;
        if (target == charset::jis && !isKanji) {
            bytes += "\x1B$B";
            isKanji = true;
        }
        bytes.append(known.bytes, known.size);
        return true;
    }

    // Found once for each character.
    const code& code_of(char16_t unit) {
        if (codes.empty()) codes.resize(0x10000);
        code& entry = codes[unit];
        if (entry.isKnown) return entry;
        entry.isKnown = true;
        const unsigned short text[] = {unit, 0};
        const Xstring character(text, 1);
        unsigned char sjis[3];
        character.sjis_str(sjis);
        if (sjis[0] < 0x80) return entry;  // a question mark, or what only looks alike
        char result[3] = {};
        if (target == charset::sjis) {
            std::memcpy(result, sjis, 3);
        } else if (target == charset::euc) {
            character.euc_str(reinterpret_cast<unsigned char*>(result));
        } else {
            character.jis_str(result);
        }
        const bool isOne = result[1] == 0;
        const bool isAscii = target != charset::jis && static_cast<unsigned char>(result[0]) < 0x80;
        // Half-width kana, which are no pairs, have no place in 7 bits.
        if (isAscii || (target == charset::jis && isOne)) return entry;
        entry.size = isOne ? 1 : 2;
        std::memcpy(entry.bytes, result, 2);
        return entry;
    }

    charset target;
    bool isKanji = false;  // between the escape sequences of ISO-2022-JP
    std::string bytes;
    std::vector<code> codes;
};

// A document as the library writes it, in another encoding: characters that have no code there
// become references where one may stand.
class markup_writer {
public:
    markup_writer(std::u16string_view document, const encoding& target)
        : units(document), out(target.characters), name(target.name) {}

    std::string write() {
        put_declaration();
        while (at < units.size()) put_piece();
        return out.finish();
    }

private:
    bool begins(std::u16string_view markup) const {
        return units.compare(at, markup.size(), markup) == 0;
    }

    void put_piece() {
        if (begins(u"<!--")) return put_through(u"-->", "a comment");
        if (begins(u"<![CDATA[")) return put_section();
        if (begins(u"<?")) return put_through(u"?>", "a processing instruction");
        if (begins(u"<!")) return put_document_type();
        if (begins(u"<")) return put_tag();
        put_or_refer(u"\r");
    }

    // The value of a pseudo-attribute in the declaration that is there.
    std::string declared(std::u16string_view declaration, std::u16string_view wanted) const {
        const std::size_t begin = declaration.find(wanted);
        if (begin == std::u16string_view::npos) return {};
        const std::size_t value = begin + wanted.size();
        std::string found;
        for (const char16_t c : declaration.substr(value, declaration.find(u'"', value) - value)) {
            found += static_cast<char>(c);
        }
        return found;
    }

    void put_declaration() {
        std::u16string_view declaration;
        if (begins(u"<?xml ")) {
            declaration = units.substr(0, units.find(u"?>"));
            at = declaration.size() + 2;
            while (at < units.size() && units[at] == u'\n') ++at;
        }
        const std::string version = declared(declaration, u"version=\"");
        const std::string standalone = declared(declaration, u"standalone=\"");
        out.put("<?xml version=\"" + (version.empty() ? "1.0" : version) + "\" encoding=\"" + name +
                '"');
        if (!standalone.empty()) out.put(" standalone=\"" + standalone + '"');
        out.put("?>\n");
    }

    char32_t next() {
        const char32_t first = units[at++];
        if ((first & 0xF800) != 0xD800) return first;
        const char32_t second = at < units.size() ? units[at] : 0;
        if (first >= 0xDC00 || (second & 0xFC00) != 0xDC00) {
            throw error(QVOXException::INVALID_CHAR_ERR, "half of a surrogate pair");
        }
        ++at;
        return 0x10000 + ((first & 0x3FF) << 10) + (second & 0x3FF);
    }

    static std::string hexadecimal(char32_t character, int digits) {
        char text[16];
        std::snprintf(text, sizeof text, "%0*X", digits, static_cast<unsigned>(character));
        return text;
    }

    static std::string reference(char32_t character) {
        return "&#x" + hexadecimal(character, 1) + ';';
    }

    void put_or_refer(std::u16string_view referred) {
        const bool mustRefer = referred.find(units[at]) != std::u16string_view::npos;
        const char32_t character = next();
        if (mustRefer || !out.put(character)) out.put(reference(character));
    }

    void put_or_refuse(const char* where) {
        const char32_t character = next();
        if (out.put(character)) return;
        throw error(QVOXException::INVALID_CHAR_ERR, "U+" + hexadecimal(character, 4) + " in " +
                                                         where + " can't be written in " + name);
    }

    void put_to(std::size_t end, const char* where) {
        while (at < end) put_or_refuse(where);
    }

    void put_through(std::u16string_view end, const char* where) {
        const std::size_t found = units.find(end, at);
        put_to(found == std::u16string_view::npos ? units.size() : found + end.size(), where);
    }

    // A reference takes the section apart.
    void put_section() {
        const std::size_t found = units.find(u"]]>", at);
        const std::size_t end = found == std::u16string_view::npos ? units.size() : found + 3;
        while (at < end) {
            const bool mustRefer = units[at] == u'\r';
            const char32_t character = next();
            if (!mustRefer && out.put(character)) continue;
            out.put("]]>" + reference(character) + "<![CDATA[");
        }
    }

    // Values are between double quotes.
    void put_tag() {
        bool isValue = false;
        for (bool isEnd = false; at < units.size() && !isEnd;) {
            const char16_t unit = units[at];
            isEnd = unit == u'>' && !isValue;
            if (unit == u'"') isValue = !isValue;
            if (isValue) {
                put_or_refer(u"\t\n\r");
            } else {
                put_or_refuse("a name");
            }
        }
    }

    void put_document_type() {
        char16_t quote = 0;
        int depth = 0;
        for (bool isEnd = false; at < units.size() && !isEnd;) {
            const char16_t unit = units[at];
            if (quote != 0) {
                if (unit == quote) quote = 0;
            } else if (unit == u'"' || unit == u'\'') {
                quote = unit;
            } else if (unit == u'[' || unit == u']') {
                depth += unit == u'[' ? 1 : -1;
            }
            isEnd = unit == u'>' && quote == 0 && depth == 0;
            put_or_refuse("a declaration");
        }
    }

    std::u16string_view units;
    encoder out;
    std::string name;
    std::size_t at = 0;
};

inline std::string written(Document& document, std::string_view encodingName) {
    const encoding& target = encoding_named(encodingName);
    const std::vector<unsigned short> buffer = checked([&] {
        int size = 0;
        DOMParser().write(&document, static_cast<unsigned short*>(nullptr), &size);
        std::vector<unsigned short> units(static_cast<std::size_t>(size) / 2 + 1);
        DOMParser().write(&document, units.data(), &size);
        return units;
    });
    const Xstring text(buffer.data(), static_cast<int>(buffer.size()) - 1);
    std::u16string_view units = text;
    units = units.substr(0, units.find(u'\0'));
    return markup_writer(units, target).write();
}

// Writes beside a file and renames, so that a failure leaves the old one as it was. What is no
// regular file is written directly.
inline void replace_file(const std::filesystem::path& given, const std::string& bytes) {
    namespace fs = std::filesystem;
    const auto write = [&](const fs::path& name) {
        std::ofstream file(name, std::ios::binary | std::ios::trunc);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        file.close();
        return static_cast<bool>(file);
    };
    std::error_code failure;
    const fs::path name = fs::exists(given, failure) ? fs::canonical(given, failure) : given;
    const fs::file_status status = fs::status(name, failure);
    bool isGood = false;
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        isGood = write(name);
    } else {
        fs::path beside = name;
        beside += '.' + std::to_string(std::random_device()()) + ".tmp";
        isGood = write(beside);
        std::error_code unkept;
        if (isGood && fs::exists(status)) fs::permissions(beside, status.permissions(), unkept);
        if (isGood) {
            fs::rename(beside, name, failure);
            isGood = !failure;
        }
        if (!isGood) fs::remove(beside, unkept);
    }
    if (!isGood) {
        throw error(QVOXException::FILE_WRITE_ERR,
                    "file (" + shown_name(given) + ") cannot be written");
    }
}

}  // namespace qvox::easy::detail

#endif
