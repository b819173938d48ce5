#include "support/recorder.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <typeinfo>

#include <gtest/gtest.h>

#include "support/encode.h"
#include "support/system.h"

namespace qvox_test {

namespace {

namespace fs = std::filesystem;

class WorkingDirectory : public testing::Environment {
public:
    void SetUp() override { fs::current_path(os::new_folder()); }
    void TearDown() override {
        const fs::path folder = fs::current_path();
        fs::current_path(folder.parent_path());
        fs::remove_all(folder);
    }
};

const testing::Environment* const workingDirectory =
    testing::AddGlobalTestEnvironment(new WorkingDirectory);

// On Windows a name is UTF-8, or else Shift_JIS, as the library has it.
fs::path path_of(const std::string& name) {
    if (!os::HAS_WIDE_NAMES) return name;
    const qvox::Xstring utf8 = qvox::Xstring::fromUtf8(name);
    return utf8.utf8() == name ? utf8.u16_str() : qvox::Xstring(name.c_str()).u16_str();
}

std::string escape_of(char32_t character) {
    switch (character) {
        case '\\': return "\\\\";
        case '\'': return "\\'";
        case '\n': return "\\n";
        case '\r': return "\\r";
        case '\t': return "\\t";
        default: break;
    }
    const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
    if (!control && (character < 0xD800 || character >= 0xE000)) return {};
    char hex[16];
    std::snprintf(hex, sizeof hex, "\\u{%x}", static_cast<unsigned>(character));
    return hex;
}

}  // namespace

std::string quoted(const qvox::Xstring& text) {
    if (text.isNull()) return "-";
    std::string out = "'";
    for_each_character(text.data(), text.length(), [&out](char32_t character) {
        const std::string escape = escape_of(character);
        escape.empty() ? append_utf8(out, character) : void(out += escape);
    });
    return out + "'";
}

std::string joined(const std::string& lines) {
    std::string out;
    for (const char c : lines) out += c == '\n' ? std::string("; ") : std::string(1, c);
    return out.substr(0, out.empty() ? 0 : out.size() - 2);
}

void Recorder::event(const char* name, std::initializer_list<const Text*> texts) {
    line(name, texts);
}

void Recorder::line(std::string text, std::initializer_list<const Text*> texts) {
    for (const Text* each : texts) text += ' ' + quoted(*each);
    events += text + '\n';
    if (reaction && text.compare(0, awaited.size(), awaited) == 0) reaction();
}

void Recorder::report(const char* level, const Exception& exception) {
    line(std::string(level) + ' ' + std::to_string(exception.getCode()) + ' ' +
             std::to_string(exception.getLineNumber()) + ':' +
             std::to_string(exception.getColumnNumber()),
         {&exception.getMessage()});
}

void Recorder::startElement(const Text& uri, const Text& local, const Text& qName,
                            const qvox::Attributes& attributes) {
    std::string text = "startElement " + quoted(uri) + ' ' + quoted(local) + ' ' + quoted(qName);
    for (int i = 0; i < attributes.getLength(); ++i) {
        text += " [" + quoted(attributes.getURI(i)) + ' ' + quoted(attributes.getLocalName(i)) +
                ' ' + quoted(attributes.getQName(i)) + ' ' + quoted(attributes.getType(i)) + ' ' +
                quoted(attributes.getValue(i)) + ']';
    }
    line(text, {});
}

void write_file(const std::string& name, const std::string& bytes) {
    std::ofstream(path_of(name), std::ios::binary) << bytes;
}

std::string read_file(const std::string& name) {
    std::ifstream stream(path_of(name), std::ios::binary);
    EXPECT_TRUE(stream) << name;
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

std::string output_of(const std::function<void()>& action) {
    std::FILE* const capture = os::temporary_file();
    {
        const os::OutputDiversion diversion(capture);
        action();
    }
    std::fseek(capture, 0, SEEK_END);
    std::string output(static_cast<std::size_t>(std::ftell(capture)), '\0');
    std::rewind(capture);
    EXPECT_EQ(std::fread(output.data(), 1, output.size(), capture), output.size());
    std::fclose(capture);
    return output;
}

Outcome observe(const std::function<void()>& parse, const Recorder* recorder) {
    Outcome outcome;
    outcome.output = output_of([&] {
        try {
            parse();
        } catch (const qvox::QVOXException& exception) {
            EXPECT_EQ(typeid(exception), typeid(qvox::QVOXException));
            outcome.code = exception.getCode();
            const qvox::Xstring& message = exception.getMessage();
            for_each_character(message.data(), message.length(),
                               [&](char32_t c) { append_utf8(outcome.message, c); });
            outcome.type = quoted(exception.toString());
        }
    });
    if (recorder != nullptr) outcome.events = recorder->events;
    return outcome;
}

void (*documentSeen)(const std::string& bytes) = nullptr;

Outcome parse_bytes(const std::string& bytes, const Options& options) {
    if (documentSeen != nullptr && options.files.empty()) documentSeen(bytes);
    for (const File& file : options.files) write_file(file.name, file.bytes);
    write_file("doc.xml", bytes);
    return parse_file("doc.xml", options);
}

Outcome parse_file(const std::string& name, const Options& options) {
    qvox::SAXParser parser;
    parser.setFeature(qvox::FEATURE_NAMESPACES, options.namespaces);
    parser.setFeature(qvox::FEATURE_NAMESPACE_PREFIXES, options.namespacePrefixes);
    Recorder plain;
    Recorder& recorder = options.recorder != nullptr ? *options.recorder : plain;
    recorder.attach(parser);
    return observe([&] { parser.parse(name.c_str()); }, &recorder);
}

}  // namespace qvox_test
