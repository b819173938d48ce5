#include "event_source.h"

#include <algorithm>

#include "escape.h"

void EventSource::attach(qvox::SAXParser& parser) {
    parser.setFeature(qvox::FEATURE_NAMESPACE_PREFIXES, true);
    parser.setContentHandler(this);
    parser.setProperty(qvox::PROPERTY_LEXICAL_HANDLER, static_cast<qvox::LexicalHandler*>(this));
    recorder.attach(parser);
}

void EventSource::characters(const Text& text) { sink.text(view_of(text)); }

void EventSource::startElement(const Text& /*uri*/, const Text& /*localName*/, const Text& qName,
                               const qvox::Attributes& all) {
    countMarkup();
    attributes.clear();
    const int length = all.getLength();
    for (int i = 0; i < length; ++i) {
        takeAttribute(view_of(all.getQName(i)), view_of(all.getValue(i)));
    }
    sink.startElement(view_of(qName), attributes);
}

// The later one of two takes the place of the first, as in a tree.
void EventSource::takeAttribute(UnitView name, UnitView value) {
    const std::size_t first = indexOf(name);
    if (first == attributes.size()) {
        attributes.push_back({name, value, false});
        return;
    }
    attributes[first].value = value;
    std::string shown;
    escape_units(shown, name.data(), static_cast<int>(name.size()), Style::PLAIN);
    repeated.push_back({place(), shown});
}

// Of the attribute, or the number of attributes where it is new. Names are kept in order where they
// are many.
std::size_t EventSource::indexOf(UnitView name) {
    constexpr std::size_t MANY = 16;
    if (attributes.size() < MANY) {
        const auto found =
            std::find_if(attributes.begin(), attributes.end(),
                         [name](const Attribute& attribute) { return attribute.name == name; });
        return static_cast<std::size_t>(found - attributes.begin());
    }
    if (attributes.size() == MANY) {
        indexes.clear();
        for (std::size_t i = 0; i < MANY; ++i) indexes.emplace(attributes[i].name, i);
    }
    return indexes.emplace(name, attributes.size()).first->second;
}

void EventSource::endElement(const Text& /*uri*/, const Text& /*localName*/, const Text& qName) {
    sink.endElement(view_of(qName));
}

void EventSource::processingInstruction(const Text& target, const Text& data) {
    countMarkup();
    if (isInDocumentType()) {
        ++lost;
    } else {
        sink.processingInstruction(view_of(target), view_of(data));
    }
}

void EventSource::comment(const Text& text) {
    countMarkup();
    if (isInDocumentType()) {
        ++lost;
    } else {
        sink.comment(view_of(text));
    }
}

void EventSource::startCDATA() {
    countMarkup();
    sink.startCdata();
}

void EventSource::endCDATA() { sink.endCdata(); }

void EventSource::startDTD(const Text& name, const Text& publicId, const Text& systemId) {
    MarkupCounter::startDTD(name, publicId, systemId);
    typePlace = place();
    recorder.startDTD(publicId, systemId);
}
