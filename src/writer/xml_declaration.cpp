#include "writer/xml_declaration.h"

#include "text/wide.h"

namespace qvox {

namespace {

struct NamedEncoding {
    const char* name;
    EncodingId encoding;
};

constexpr NamedEncoding OUTPUT_ENCODINGS[] = {
    {"UTF-16", UTF16},
    {"Shift_JIS", SJIS},
    {"EUC-JP", EUC},
};

// The index of the first quote from `start` on, or the length of the text.
int find_quote(const Xstring& text, int start) {
    int i = start;
    while (i < text.length() && text.data()[i] != '"' && text.data()[i] != '\'') ++i;
    return i;
}

}  // namespace

EncodingId encoding_id(const Xstring& name) {
    for (const NamedEncoding& candidate : OUTPUT_ENCODINGS) {
        if (wide_narrow_casecompare(name.data(), candidate.name) == 0) return candidate.encoding;
    }
    return osEncoding;
}

DeclaredEncoding declared_encoding(const Xstring& data) {
    const unsigned found = data.find("encoding");
    if (found >= static_cast<unsigned>(data.length())) return {};
    const int start = find_quote(data, static_cast<int>(found)) + 1;
    const int end = find_quote(data, start);
    if (end >= data.length()) return {};
    return {data.substr(start, end - start), start};
}

Xstring with_encoding(const Xstring& data, const DeclaredEncoding& declared, const Xstring& name) {
    if (declared.name.isNull()) return data + " encoding=\"" + name + "\"";
    const int behind = declared.position + declared.name.length();
    return data.substr(0, declared.position) + name + data.substr(behind, data.length() - behind);
}

}  // namespace qvox
