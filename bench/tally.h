/// \file
/// What a parser counts while it reads a document: the work that all contestants do alike.
#ifndef QVOX_BENCH_TALLY_H
#define QVOX_BENCH_TALLY_H

namespace bench {

/// Parsers hand over text in their own form, so its length counts 16-bit units or UTF-8 bytes.
enum class LengthUnit { Unit16, Utf8Byte };

struct Tally {
    long elements = 0;
    long attributes = 0;
    long valueLength = 0;
    long textLength = 0;

    Tally& operator+=(const Tally& other) {
        elements += other.elements;
        attributes += other.attributes;
        valueLength += other.valueLength;
        textLength += other.textLength;
        return *this;
    }

    bool operator==(const Tally& other) const {
        return elements == other.elements && attributes == other.attributes &&
               valueLength == other.valueLength && textLength == other.textLength;
    }
};

}  // namespace bench

#endif
