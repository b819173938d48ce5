/// \file
/// The parsers that are compared as SAX parsers. Each registers itself, so that one that isn't
/// installed is simply not there.
#ifndef QVOX_BENCH_SAX_PARSERS_H
#define QVOX_BENCH_SAX_PARSERS_H

#include <string>
#include <vector>

#include "documents.h"
#include "encodings.h"
#include "tally.h"

namespace bench {

/// One way to run a parser over a document, with namespaces and with handlers that count into a
/// Tally and nothing else.
struct SaxParser {
    std::string name;
    std::string version;
    LengthUnit lengthUnit;
    /// UTF-8 and UTF-16 go without saying.
    bool readsJapaneseCodes;
    /// Raises std::runtime_error where the parser refuses the document.
    Tally (*parse)(const Source& source);

    bool reads(Encoding encoding) const { return readsJapaneseCodes || !isJapaneseCode(encoding); }

    /// What a parse of a document with these contents has to give.
    Tally expected(const Contents& contents) const { return contents.expected(lengthUnit, false); }
};

/// All registered parsers, ours first.
const std::vector<SaxParser>& saxParsers();

/// Raises std::invalid_argument for an unknown name.
const SaxParser& saxParser(const std::string& name);

/// A static object of this type registers a parser.
class SaxParserRegistration {
public:
    explicit SaxParserRegistration(const SaxParser& parser);
};

}  // namespace bench

#endif
