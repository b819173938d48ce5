// What a test sees of a parse: its events, its exception, and its lines on standard output.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <qvox/qvox.h>

#include "support/event_lines.h"

namespace qvox_test {

// A text as UTF-8 in single quotes, a null text as a dash. Escaped are \\ \' \n \r \t; every other
// control character and each half of a surrogate pair without the other is \u{hex}.
std::string quoted(const qvox::Xstring& text);

// Writes each event as a line: its name, then its texts as by quoted(), in the order of the
// handler's arguments.
//     startElement 'uri' 'local' 'qName' ['uri' 'local' 'qName' 'type' 'value'] [...]
//     characters 'text'             characters bulk 'text'
//     error 6 3:14 'doc.xml : parse error (x) at line 3, col 14'     (code line:column message)
class Recorder : public EventLines {
public:
    // Runs `action` behind each event whose line begins with `beginning`.
    void when(const std::string& beginning, const std::function<void()>& action) {
        awaited = beginning;
        reaction = action;
    }

    std::string events;

    void startElement(const Text& uri, const Text& local, const Text& qName,
                      const qvox::Attributes& attributes) override;

private:
    void event(const char* name, std::initializer_list<const Text*> texts) override;
    void report(const char* level, const Exception& exception) override;
    void line(std::string text, std::initializer_list<const Text*> texts);

    std::string awaited;
    std::function<void()> reaction;
};

struct Outcome {
    std::string events;   // of the recorder
    int code = 0;         // of the exception; 0 for an accepted document
    std::string message;  // of the exception, in UTF-8
    std::string output;   // what went to standard output, byte for byte (Shift_JIS)
    std::string type;     // what toString() of the exception gave, as by quoted()
};

struct File {
    std::string name;
    std::string bytes;
};

struct Options {
    bool namespaces = true;
    bool namespacePrefixes = false;
    std::vector<File> files = {};  // written beside the document
    Recorder* recorder = nullptr;  // instead of a plain one
};

// The tests of a binary run in an empty folder of their own, which is the working directory: files
// that they write and parse have names without a folder.
void write_file(const std::string& name, const std::string& bytes);
std::string read_file(const std::string& name);

// The lines in one, joined by "; ".
std::string joined(const std::string& lines);

// Runs `action` and says what it wrote to standard output.
std::string output_of(const std::function<void()>& action);

// Runs `parse` with standard output captured, and takes its exception, which must be of the class
// QVOXException itself; others pass through. `recorder` may be null.
Outcome observe(const std::function<void()>& parse, const Recorder* recorder = nullptr);

// If there is one, told of each document that parse_bytes reads with usual options.
extern void (*documentSeen)(const std::string& bytes);

// Parses the bytes as the file "doc.xml".
Outcome parse_bytes(const std::string& bytes, const Options& options = {});

// Parses a file that is there.
Outcome parse_file(const std::string& name, const Options& options = {});

}  // namespace qvox_test
