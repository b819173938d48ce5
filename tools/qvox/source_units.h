// The units of a file before they are decoded: bytes, or the 16-bit units of UTF-16.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

// Markup is looked for in them as it is: no byte of another character looks like one of < > ! ? -
// or a quote, but in ISO-2022-JP, where those of kanji are left out.
class SourceUnits {
public:
    static constexpr int END = -1;

    enum Choice { MARKUP_ONLY, ALL };  // whether the bytes of kanji in ISO-2022-JP are left out

    // A file that can't be opened is an empty one.
    explicit SourceUnits(const std::string& path, Choice unitChoice = MARKUP_ONLY);

    int next();
    // The line in which the next unit stands, from 1 on.
    int line() const { return lineNumber; }
    // Whether they are those of UTF-16.
    bool isWide() const { return unitSize == 2; }

private:
    int nextUnit();
    int nextByte();

    struct CloseFile {
        void operator()(std::FILE* opened) const { std::fclose(opened); }
    };

    std::unique_ptr<std::FILE, CloseFile> file;
    const Choice choice;
    std::vector<unsigned char> block;
    std::size_t inBlock = 0;
    int unitSize = 1;
    int highByte = 0;  // the place of it in a unit of two
    int lineNumber = 1;
    int last = 0;
};

// The XML declaration at the start of the file, without its "<?" and "?>"; empty where there is
// none.
std::string xml_declaration_of(const std::string& path);

// What stands in quotes behind a name in an XML declaration; empty where that isn't there.
std::string pseudo_attribute(const std::string& declaration, const std::string& name);

// The name of the encoding in which the file is taken to be written.
std::string encoding_of(const std::string& path);
