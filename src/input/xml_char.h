// Which characters a document may hold.
#pragma once

namespace qvox {

// A character of XML 1.0.
inline bool is_xml_char(long long c) {
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) ||
           (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

}  // namespace qvox
