// The features and properties of one parser object.
#pragma once

#include <cstddef>

namespace qvox {

// What may be done with a feature or property: an access of at least the number is needed.
enum Access : int { NO_ACCESS = 0, READ_ACCESS = 1, WRITE_ACCESS = 2 };

enum PropertySlot : int { LEXICAL_HANDLER_SLOT = 1, DECL_HANDLER_SLOT = 2, DOM_NODE_SLOT = 3 };

class ParserImpl {
public:
    static constexpr std::size_t FEATURE_COUNT = 7;

    ParserImpl();

    // The value of a feature. Raises the exceptions of Parser::getFeature.
    bool feature(const char* name, bool parsing) const;
    void setFeature(const char* name, bool value, bool parsing);

    // The slot of a property that may be read or written now. Raises the exceptions of
    // SAXParser::getProperty and setProperty.
    static int readableProperty(const char* name, bool parsing);
    static int writableProperty(const char* name, bool parsing);

private:
    bool values[FEATURE_COUNT];
};

}  // namespace qvox
