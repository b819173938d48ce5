#include "document.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <memory>

#include "file_name.h"
#include "output.h"
#include "temporary_file.h"

namespace {

// What stands around the name of the file in the library's messages. The name is looked for with
// its surroundings, because its last byte, misread, may swallow the byte behind it.
struct Surroundings {
    const char* before;
    const char* after;
};

constexpr Surroundings NAME_SURROUNDINGS[] = {
    {"", " : "},    // grammar
    {" : ", " ("},  // lexer
    {"(", ")"},     // opening
};

// Made once, and there until the program ends.
std::string copy_of_standard_input() {
    static const std::unique_ptr<TemporaryFile> copy = [] {
        auto file = std::make_unique<TemporaryFile>(std::filesystem::temp_directory_path());
        file->fill(standard_input());
        return file;
    }();
    return copy->path();
}

}  // namespace

std::optional<Failure> failure_of(const std::function<void()>& parse, const std::string& fileName) {
    qvox::takeErrorPlace();  // of an earlier error
    Failure failure;
    try {
        parse();
        return std::nullopt;
    } catch (const qvox::QVOXException& exception) {
        append_message(failure.message, exception.getMessage(), fileName, Style::PLAIN);
    } catch (const std::exception& exception) {
        failure.message = exception.what();
    }
    const qvox::ErrorPlace place = qvox::takeErrorPlace();
    failure.line = place.line;
    failure.column = place.column;
    return failure;
}

std::optional<Failure> parse_document(qvox::SAXParser& parser, const std::string& fileName) {
    return failure_of([&] { parser.parse(library_name(readable_path(fileName)).c_str()); },
                      fileName);
}

std::string describe_place(const std::string& fileName, const Failure& failure) {
    std::string text;
    escape_file_name(text, shown_name(fileName), Style::PLAIN);
    if (failure.line > 0) text += ':' + std::to_string(failure.line);
    if (failure.column > 0) text += ':' + std::to_string(failure.column);
    return text;
}

std::string describe(const std::string& fileName, const Failure& failure) {
    return describe_place(fileName, failure) + ": " + failure.message + '\n';
}

std::string readable_path(const std::string& fileName) {
    if (fileName != "-") return fileName;
    return CAN_OPEN_STANDARD_INPUT ? "/dev/stdin" : copy_of_standard_input();
}

std::string shown_name(const std::string& fileName) {
    return fileName == "-" ? "standard input" : fileName;
}

void append_message(std::string& out, const qvox::Xstring& message, const std::string& fileName,
                    Style style) {
    const unsigned short* const text = message.data();
    const unsigned short* const end = text + message.length();
    for (const Surroundings& around : NAME_SURROUNDINGS) {
        const qvox::Xstring misread(
            (around.before + library_name(readable_path(fileName)) + around.after).c_str());
        const unsigned short* const found =
            std::search(text, end, misread.data(), misread.data() + misread.length());
        if (found == end) continue;

        const unsigned short* const behind = found + misread.length();
        escape_units(out, text, static_cast<int>(found - text), style);
        out += around.before;
        escape_file_name(out, shown_name(fileName), style);
        out += around.after;
        escape_units(out, behind, static_cast<int>(end - behind), style);
        return;
    }
    escape_units(out, text, message.length(), style);
}
