// Documents to write, and what comes of them.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <qvox/qvox.h>

#include "support/encode.h"
#include "support/recorder.h"

namespace qvox_test {

// A parsed document, freed at the end.
class Parsed {
public:
    // Of a text in memory, or of a file.
    explicit Parsed(const std::u16string& text) {
        std::vector<unsigned short> units(text.begin(), text.end());
        units.push_back(0);
        document = parser.parse(units.data());
    }
    explicit Parsed(const char* fileName) : document(parser.parse(fileName)) {}
    Parsed(const Parsed&) = delete;
    Parsed& operator=(const Parsed&) = delete;
    ~Parsed() { parser.free(document); }

    qvox::DOMParser parser;
    qvox::Document* document;
};

inline int measured(qvox::Document* document) {
    int length = -1;
    qvox::DOMParser().write(document, static_cast<unsigned short*>(nullptr), &length);
    return length;
}

// What the overload for memory writes, in UTF-8.
inline std::string in_memory(qvox::Document* document) {
    int length = measured(document);
    std::vector<char16_t> units(static_cast<std::size_t>(length) / 2 + 1, u'#');
    qvox::DOMParser().write(document, reinterpret_cast<unsigned short*>(units.data()), &length);
    EXPECT_EQ(units[units.size() - 2], u'\0');
    EXPECT_EQ(units[units.size() - 1], u'#');
    return utf8(std::u16string(units.data()));
}

// To a file. A null encoding is that of the overload without one.
inline void write_as(qvox::Document* document, const char* name, const char* encoding = nullptr) {
    encoding == nullptr ? qvox::DOMParser().write(document, name)
                        : qvox::DOMParser().write(document, name, encoding);
}

inline std::string in_file(qvox::Document* document, const char* encoding = nullptr) {
    write_as(document, "written.xml", encoding);
    return read_file("written.xml");
}

inline std::string on_standard_output(qvox::Document* document) {
    return output_of([document] { write_as(document, nullptr); });
}

}  // namespace qvox_test
