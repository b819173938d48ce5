#include "parser/sax_types.h"

namespace qvox {

int AttributesImpl::getIndex(const Xstring& uri, const Xstring& localName) const {
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (*records[i].uri == uri && *records[i].localName == localName)
            return static_cast<int>(i);
    }
    return -1;
}

int AttributesImpl::getIndex(const Xstring& qName) const {
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (*records[i].qName == qName) return static_cast<int>(i);
    }
    return -1;
}

int AttributesImpl::getLength() const { return static_cast<int>(records.size()); }

const Xstring& AttributesImpl::getLocalName(int index) const {
    return member(index, &Record::localName);
}

const Xstring& AttributesImpl::getQName(int index) const { return member(index, &Record::qName); }

const Xstring& AttributesImpl::getType(const Xstring& uri, const Xstring& localName) const {
    return getType(getIndex(uri, localName));
}

const Xstring& AttributesImpl::getType(const Xstring& qName) const {
    return getType(getIndex(qName));
}

const Xstring& AttributesImpl::getType(int index) const { return member(index, &Record::type); }

const Xstring& AttributesImpl::getURI(int index) const { return member(index, &Record::uri); }

const Xstring& AttributesImpl::getValue(const Xstring& uri, const Xstring& localName) const {
    return getValue(getIndex(uri, localName));
}

const Xstring& AttributesImpl::getValue(const Xstring& qName) const {
    return getValue(getIndex(qName));
}

const Xstring& AttributesImpl::getValue(int index) const {
    if (index < 0 || index >= getLength()) return Xstring::Null;
    return records[static_cast<std::size_t>(index)].value;
}

void AttributesImpl::renew(std::size_t count) {
    records.clear();
    records.reserve(count);
}

// Any index is allowed: one that is out of range, as a search that failed gives it, has null texts.
const Xstring& AttributesImpl::member(int index, const Xstring* Record::*field) const {
    if (index < 0 || index >= getLength()) return Xstring::Null;
    return *(records[static_cast<std::size_t>(index)].*field);
}

LocatorImpl::LocatorImpl(int column, int line, const Xstring& publicIdentifier,
                         const Xstring& systemIdentifier)
    : columnNumber(column),
      lineNumber(line),
      publicId(publicIdentifier),
      systemId(systemIdentifier) {}

}  // namespace qvox
