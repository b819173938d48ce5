#include "source_file.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "document.h"
#include "escape.h"
#include "file_name.h"

namespace {

namespace fs = std::filesystem;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

}  // namespace

SourceFile::SourceFile(const std::string& fileName, Reading reading)
    : name(fileName), place(readable_path(fileName)) {
    copyWhatIsReadOnce();
    if (reading == ALL_OF_UTF8) decode();
}

void SourceFile::copyWhatIsReadOnce() {
    std::error_code ignored;
    const fs::file_status status = fs::status(path_of(place), ignored);
    if (!fs::exists(status) || fs::is_regular_file(status) || fs::is_directory(status)) return;
    const OpenFile original(open_file(place, "rb"));
    if (original == nullptr) return;
    copy.emplace(fs::temp_directory_path());
    copy->fill(original.get());
}

void SourceFile::decode() {
    survey = survey_utf8(originalPath());
    if (!survey.needsDecoding) return;
    decoded.emplace(fs::temp_directory_path());
    decode_utf8_file(originalPath(), survey, decoded->stream());
    decoded->close();
}

void SourceFile::rename(std::string& message) const {
    if (decoded) replace_name(message, decoded->path(), shown_name(name));
    if (copy) replace_name(message, copy->path(), shown_name(name));
    if (!CAN_OPEN_STANDARD_INPUT && name == "-") replace_name(message, place, shown_name(name));
}

void replace_name(std::string& message, const std::string& path, const std::string& name) {
    std::string shownPath;
    std::string shownName;
    escape_file_name(shownPath, path, Style::PLAIN);
    escape_file_name(shownName, name, Style::PLAIN);
    for (std::size_t at = message.find(shownPath); at != std::string::npos;
         at = message.find(shownPath, at + shownName.size())) {
        message.replace(at, shownPath.size(), shownName);
    }
}
