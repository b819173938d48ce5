// The events of a SAX parse, written down and held against the rules that all event streams keep.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include <qvox/qvox.h>

#include "support/event_lines.h"

namespace qvox_fuzz {

class EventLog : public qvox_test::EventLines {
public:
    // A parse with this log, from its beginning. Returns the code of its exception, or 0.
    int parse(qvox::SAXParser& parser, const char* fileName);

    // Ends the process where two logs differ, and says where. The first megabyte is compared line
    // by line, what comes behind it by its hash.
    static void require_same(const EventLog& a, const EventLog& b);

    void startElement(const Text& uri, const Text& local, const Text& qName,
                      const qvox::Attributes& attributes) override;

protected:
    void event(const char* name, std::initializer_list<const Text*> texts) override;

private:
    void report(const char* level, const Exception& exception) override;
    void follow(const std::string& name, std::initializer_list<const Text*> texts);
    void line(const char* name, std::initializer_list<const Text*> texts);
    void add(char byte);
    void add(const Text& text);

    std::string text;        // the first events, a line each
    std::uint64_t hash = 0;  // of all
    bool isStarted = false;
    bool hasError = false;
    std::vector<std::pair<std::string, std::string>> open;  // what has begun, and its name
};

}  // namespace qvox_fuzz
