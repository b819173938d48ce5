#include "scanner/run_stops.h"

#include "text/char_classes.h"

namespace qvox {

namespace {

// The controls but tab, and the characters of `symbols`.
constexpr RunStops stops_at(const char* symbols) {
    RunStops stops = {};
    for (int c = 0; c < ' '; ++c) stops.ascii[c] = c != '\t';
    for (; *symbols != 0; ++symbols) stops.ascii[static_cast<unsigned char>(*symbols)] = true;
    return stops;
}

constexpr bool is_in_name(int c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == ':' || c == '_';
}

constexpr RunStops stops_outside_names() {
    RunStops stops = {};
    for (int c = 0; c < 0x80; ++c) stops.ascii[c] = !is_in_name(c);
    stops.wide = true;
    return stops;
}

}  // namespace

constexpr RunStops CONTENT_STOPS = stops_at("<&>");
constexpr RunStops NAME_STOPS = stops_outside_names();
constexpr RunStops LITERAL_STOPS = stops_at("\"'&%");
constexpr RunStops COMMENT_STOPS = stops_at("->");
constexpr RunStops CDATA_STOPS = stops_at(">");

}  // namespace qvox
