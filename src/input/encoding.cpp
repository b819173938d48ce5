#include "input/encoding.h"

#include "input/file_end.h"
#include "runtime/report.h"

namespace qvox {

namespace {

constexpr int ANY = -1;
constexpr int MARK_SIZE = 2;

// How a file begins, and what follows from that: an encoding, or a refusal where `encoding` is 0.
// In the texts "other" bytes are ANY, since the first row that matches decides.
struct Beginning {
    int bytes[4];
    int encoding;
    ByteOrder order;
    bool hasMark;
    const char* text;
};

constexpr Beginning BEGINNINGS[] = {
    {{0xFF, 0xFE, ANY, ANY}, UTF16, BYTES_LITTLE_ENDIAN, true, "UTF-16 BOM (little-endian)"},
    {{0xFF, ANY, ANY, ANY}, 0, NO_BYTE_ORDER, false, "illegal XML file"},
    {{0xFE, 0xFF, ANY, ANY}, UTF16, BYTES_BIG_ENDIAN, true, "UTF-16 BOM (big-endian)"},
    {{0xFE, ANY, ANY, ANY}, 0, NO_BYTE_ORDER, false, "illegal XML file"},
    {{0x3C, 0x3F, 0x78, 0x6D}, UTF8, NO_BYTE_ORDER, false, "UTF-8 <?xm"},
    {{0x3C, 0x3F, ANY, ANY}, UTF8, NO_BYTE_ORDER, false, "UTF-8 <?pi"},
    {{0x3C, 0x00, 0x3F, 0x00},
     UTF16,
     BYTES_LITTLE_ENDIAN,
     false,
     "UTF-16 <? (little-endian, without BOM?)"},
    {{0x3C, 0x00, 0x00, 0x00}, 0, NO_BYTE_ORDER, false, "UCS-4 (3) not supported"},
    {{0x3C, 0x00, ANY, ANY}, 0, NO_BYTE_ORDER, false, "illegal XML file"},
    {{0x00, 0x3C, 0x00, 0x3F},
     UTF16,
     BYTES_BIG_ENDIAN,
     false,
     "UTF-16 <? (big-endian, without BOM?)"},
    {{0x00, 0x3C, 0x00, 0x00}, 0, NO_BYTE_ORDER, false, "UCS-4 (2) not supported"},
    {{0x00, 0x3C, ANY, ANY}, 0, NO_BYTE_ORDER, false, "illegal XML file"},
    {{0x00, 0x00, 0x00, 0x3C}, 0, NO_BYTE_ORDER, false, "UCS-4 (0) not supported"},
    {{0x00, 0x00, 0x3C, 0x00}, 0, NO_BYTE_ORDER, false, "UCS-4 (1) not supported"},
    {{0x00, 0x00, ANY, ANY}, 0, NO_BYTE_ORDER, false, "illegal XML file"},
    {{ANY, ANY, ANY, ANY}, UTF8, NO_BYTE_ORDER, false, "encoding not determined, assume to UTF-8"},
};

constexpr const char* BYTE_ORDER_TEXTS[] = {"DON'T CARE", "BIG_ENDIAN", "LITTLE_ENDIAN"};

bool matches(const Beginning& beginning, const int (&bytes)[4]) {
    for (int i = 0; i < 4; ++i) {
        if (beginning.bytes[i] != ANY && beginning.bytes[i] != bytes[i]) return false;
    }
    return true;
}

const Beginning& beginning_of(ByteStream& file) {
    int bytes[4];
    for (int& byte : bytes) {
        byte = file.get();
        if (byte == ByteStream::END) {
            check_end_of_file(file);
            qvox_report(REPORT_ERROR, QVOXException::FORMAT_ERR, "not XML file");
        }
    }
    const Beginning* row = BEGINNINGS;
    while (!matches(*row, bytes)) ++row;
    return *row;
}

}  // namespace

DetectedEncoding detect_encoding(ByteStream& file) {
    const Beginning& beginning = beginning_of(file);
    if (beginning.encoding == 0) {
        qvox_report(REPORT_ERROR, QVOXException::FORMAT_ERR, "%s", beginning.text);
    }
    qvox_debug("xml file primary encoding = %s", beginning.text);
    qvox_debug("xml file byte order = %s", BYTE_ORDER_TEXTS[beginning.order]);

    file.rewind();
    for (int i = 0; beginning.hasMark && i < MARK_SIZE; ++i) file.get();
    return {static_cast<EncodingId>(beginning.encoding), beginning.order};
}

}  // namespace qvox
