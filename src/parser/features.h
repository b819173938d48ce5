// The features and properties of one parser object.
#pragma once

#include <functional>
#include <map>
#include <string>

namespace qvox {

// What may be done with a feature or property: an access of at least the number is needed.
enum Access : int { NO_ACCESS = 0, READ_ACCESS = 1, WRITE_ACCESS = 2 };

struct FeatureEntry {
    int parsingAccess;  // during a parse
    int idleAccess;     // otherwise
    bool value;
};

enum PropertySlot : int { LEXICAL_HANDLER_SLOT = 1, DECL_HANDLER_SLOT = 2, DOM_NODE_SLOT = 3 };

struct PropertyEntry {
    int parsingAccess;
    int idleAccess;
    int slot;
};

class ParserImpl {
public:
    ParserImpl();

    // The value of a feature. Raises the exceptions of Parser::getFeature.
    bool feature(const char* name, bool parsing) const;
    void setFeature(const char* name, bool value, bool parsing);

    // The slot of a property that may be read or written now. Raises the exceptions of
    // SAXParser::getProperty and setProperty.
    int readableProperty(const char* name, bool parsing) const;
    int writableProperty(const char* name, bool parsing) const;

private:
    std::map<std::string, FeatureEntry, std::less<>> features;
    std::map<std::string, PropertyEntry, std::less<>> properties;
};

}  // namespace qvox
