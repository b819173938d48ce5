#include "support/event_log.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "support/require.h"

namespace qvox_fuzz {

namespace {

constexpr std::size_t MOST_TEXT = 1 << 20;
constexpr std::uint64_t HASH_FACTOR = 0x100000001B3;  // that of FNV-1a

// What has to be the innermost that is open where an event is told.
constexpr const char* PLACES[][2] = {
    {"startDocument", "nothing"},
    {"startDTD", "Document"},
    {"startElement", "Document Element PrefixMapping"},
    {"startCDATA", "Element"},
    {"characters", "Element CDATA"},
    {"characters bulk", "Element CDATA"},
    {"elementDecl", "DTD"},
    {"attributeDecl", "DTD"},
    {"internalEntityDecl", "DTD"},
    {"externalEntityDecl", "DTD"},
    {"notationDecl", "DTD"},
    // These are never told.
    {"ignorableWhiteSpace", ""},
    {"setDocumentLocator", ""},
    {"skippedEntity", ""},
    {"unparsedEntityDecl", ""},
    {"resolveEntity", ""},
};

std::string key_of(const qvox::Xstring& text) {
    const auto* const units = reinterpret_cast<const char*>(text.data());
    return std::string(units, units + 2 * text.length());
}

}  // namespace

int EventLog::parse(qvox::SAXParser& parser, const char* fileName) {
    attach(parser);
    int code = 0;
    try {
        parser.parse(fileName);
    } catch (const qvox::QVOXException& exception) {
        code = exception.getCode();
        line("exception", {&exception.getMessage()});
    }
    require((code == 0) != hasError, "a refused document has told its error handler, once");
    require(code != 0 || (isStarted && open.empty()), "what has begun ends");
    return code;
}

void EventLog::require_same(const EventLog& a, const EventLog& b) {
    if (a.text == b.text) return require(a.hash == b.hash, "behind the first megabyte is the same");
    const auto at = std::mismatch(a.text.begin(), a.text.end(), b.text.begin(), b.text.end());
    const auto place = static_cast<std::size_t>(at.first - a.text.begin());
    const std::size_t begin = a.text.rfind('\n', place == 0 ? 0 : place - 1) + 1;
    const auto line_of = [&](const EventLog& log) {
        return log.text.substr(begin, log.text.find('\n', place) - begin);
    };
    require(false, (line_of(a) + "\n differs from\n" + line_of(b)).c_str());
}

void EventLog::add(char byte) {
    hash = (hash ^ static_cast<unsigned char>(byte)) * HASH_FACTOR;
    if (text.size() < MOST_TEXT) text += byte;
}

// ASCII as it is, every other unit as its number; a null text is a dash.
void EventLog::add(const Text& added) {
    if (added.isNull()) return add('-');
    const unsigned short* const units = added.data();
    require(units[added.length()] == 0, "a NUL stands behind a text");
    add('\'');
    for (int i = 0; i < added.length(); ++i) {
        const unsigned unit = units[i];
        require(unit != 0, "no NUL stands in a text");
        if (unit >= 0x20 && unit < 0x7F && unit != '\\') {
            add(static_cast<char>(unit));
        } else {
            add('\\');
            for (const int shift : {12, 8, 4, 0}) add("0123456789ABCDEF"[unit >> shift & 15U]);
        }
    }
    add('\'');
}

void EventLog::line(const char* name, std::initializer_list<const Text*> texts) {
    for (const char* c = name; *c != 0; ++c) add(*c);
    for (const Text* each : texts) {
        add(' ');
        add(*each);
    }
    add('\n');
}

void EventLog::event(const char* name, std::initializer_list<const Text*> texts) {
    require(!hasError, "nothing is told behind an error");
    follow(name, texts);
    line(name, texts);
}

// An element's mappings may end in any order, everything else is nested.
void EventLog::follow(const std::string& name, std::initializer_list<const Text*> texts) {
    isStarted |= name == "startDocument";
    const std::string innermost = open.empty() ? "nothing" : open.back().first;
    for (const auto& [event, place] : PLACES) {
        if (name == event) require(std::strstr(place, innermost.c_str()) != nullptr, event);
    }
    for (const std::string kind : {"Document", "DTD", "CDATA", "Element", "PrefixMapping"}) {
        if (name != "start" + kind && name != "end" + kind) continue;
        const bool isMapping = kind == "PrefixMapping";
        const std::string key = kind == "Element" ? key_of(*texts.begin()[2])
                                : isMapping       ? key_of(*texts.begin()[0])
                                                  : "";
        if (name[0] == 's') return void(open.emplace_back(kind, key));
        const auto begun = std::find(open.rbegin(), open.rend(), std::pair(kind, key));
        require(begun != open.rend() && (isMapping || begun == open.rbegin()),
                "what ends has begun, and what began in it has ended");
        open.erase(std::next(begun).base());
    }
}

void EventLog::report(const char* level, const Exception& exception) {
    char place[64];
    std::snprintf(place, sizeof place, "%s %d %d:%d", level, int(exception.getCode()),
                  exception.getLineNumber(), exception.getColumnNumber());
    event(place, {&exception.getMessage(), &exception.getSystemId()});
    require(level != std::string("fatalError"), "no document is fatal");
    hasError = level == std::string("error");
}

void EventLog::startElement(const Text& uri, const Text& local, const Text& qName,
                            const qvox::Attributes& attributes) {
    event("startElement", {&uri, &local, &qName});
    for (int i = 0; i < attributes.getLength(); ++i) {
        event(" attribute",
              {&attributes.getURI(i), &attributes.getLocalName(i), &attributes.getQName(i),
               &attributes.getType(i), &attributes.getValue(i)});
        const int found = attributes.getIndex(attributes.getQName(i));
        require(found >= 0 && found <= i, "an attribute is found by its name");
    }
}

}  // namespace qvox_fuzz
