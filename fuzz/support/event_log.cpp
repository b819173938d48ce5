#include "support/event_log.h"

#include <algorithm>
#include <cstdio>

#include "support/require.h"

namespace qvox_fuzz {

namespace {

constexpr std::size_t MOST_TEXT = 1 << 20;
constexpr std::uint64_t HASH_FACTOR = 0x100000001B3;  // that of FNV-1a

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
        event("exception", {&exception.getMessage()});
    }
    finish(code);
    return code;
}

void EventLog::finish(int code) {
    require(isEnded || code != 0, "an accepted document has an end");
    require((code == 0) != hasError, "a refused document has told its error handler, once");
    if (code == 0) require(openElements.empty() && openPrefixes.empty(), "all is closed");
}

std::string EventLog::difference(const EventLog& a, const EventLog& b) {
    if (a.text == b.text)
        return a.hash == b.hash ? "" : "the logs differ behind the first megabyte";
    const auto [atA, atB] =
        std::mismatch(a.text.begin(), a.text.end(), b.text.begin(), b.text.end());
    const auto line_at = [](const std::string& lines, std::string::const_iterator at) {
        const auto place = static_cast<std::size_t>(at - lines.begin());
        const std::size_t begin = lines.rfind('\n', place == 0 ? 0 : place - 1) + 1;
        return lines.substr(begin, lines.find('\n', place) - begin);
    };
    return line_at(a.text, atA) + "\n differs from\n" + line_at(b.text, atB);
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

void EventLog::event(const char* name, std::initializer_list<const Text*> texts) {
    for (const char* c = name; *c != 0; ++c) add(*c);
    for (const Text* each : texts) {
        add(' ');
        add(*each);
    }
    add('\n');
}

void EventLog::report(const char* level, const Exception& exception) {
    require(!hasError, "nothing is told behind an error");
    char place[64];
    std::snprintf(place, sizeof place, "%s %d %d:%d", level, int(exception.getCode()),
                  exception.getLineNumber(), exception.getColumnNumber());
    event(place, {&exception.getMessage(), &exception.getSystemId()});
}

void EventLog::characters(const Text& content) {
    require(!openElements.empty() && !isInDtd, "text stands in an element");
    EventLines::characters(content);
}

void EventLog::startDocument() {
    require(!isStarted, "a document starts once");
    isStarted = true;
    EventLines::startDocument();
}

void EventLog::endDocument() {
    require(isStarted && !isEnded && !hasError, "a document ends once");
    isEnded = true;
    EventLines::endDocument();
}

void EventLog::startElement(const Text& uri, const Text& local, const Text& qName,
                            const qvox::Attributes& attributes) {
    require(isStarted && !isEnded && !isInDtd && !isInCdata, "elements stand in the document");
    openElements.push_back(key_of(qName));
    event("startElement", {&uri, &local, &qName});
    for (int i = 0; i < attributes.getLength(); ++i) {
        event(" attribute",
              {&attributes.getURI(i), &attributes.getLocalName(i), &attributes.getQName(i),
               &attributes.getType(i), &attributes.getValue(i)});
        const int found = attributes.getIndex(attributes.getQName(i));
        require(found >= 0 && found <= i, "an attribute is found by its name");
    }
}

void EventLog::endElement(const Text& uri, const Text& local, const Text& qName) {
    require(!openElements.empty() && openElements.back() == key_of(qName), "tags match");
    openElements.pop_back();
    EventLines::endElement(uri, local, qName);
}

void EventLog::startPrefixMapping(const Text& prefix, const Text& uri) {
    openPrefixes.push_back(key_of(prefix));
    EventLines::startPrefixMapping(prefix, uri);
}

void EventLog::endPrefixMapping(const Text& prefix) {
    const auto open = std::find(openPrefixes.begin(), openPrefixes.end(), key_of(prefix));
    require(open != openPrefixes.end(), "a prefix mapping that ends has begun");
    openPrefixes.erase(open);
    EventLines::endPrefixMapping(prefix);
}

void EventLog::startCDATA() {
    require(!isInCdata && !openElements.empty(), "a CDATA section stands in an element");
    isInCdata = true;
    EventLines::startCDATA();
}

void EventLog::endCDATA() {
    require(isInCdata, "a CDATA section that ends has begun");
    isInCdata = false;
    EventLines::endCDATA();
}

void EventLog::startDTD(const Text& name, const Text& publicId, const Text& systemId) {
    require(!isInDtd && openElements.empty(), "a document type stands in front of the root");
    isInDtd = true;
    EventLines::startDTD(name, publicId, systemId);
}

void EventLog::endDTD() {
    require(isInDtd, "a document type that ends has begun");
    isInDtd = false;
    EventLines::endDTD();
}

void EventLog::error(const Exception& exception) {
    EventLines::error(exception);
    hasError = true;
}

void EventLog::fatalError(const Exception&) { require(false, "no document is fatal"); }
void EventLog::ignorableWhiteSpace(const Text&) { require(false, "white space is text"); }
void EventLog::setDocumentLocator(const qvox::Locator&) { require(false, "no locator is told"); }
void EventLog::skippedEntity(const Text&) { require(false, "no entity is skipped"); }
void EventLog::unparsedEntityDecl(const Text&, const Text&, const Text&, const Text&) {
    require(false, "an unparsed entity is told as an external one");
}
qvox::InputSource EventLog::resolveEntity(const Text&, const Text&) {
    require(false, "no entity is resolved");
    return {};
}

}  // namespace qvox_fuzz
