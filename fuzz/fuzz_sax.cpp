// SAX parses. Input: a byte of switches, then the document and up to three external pieces, with
// separators between them (support/input.h); the document names the pieces by their system
// identifiers (support/memory_files.h).
#include <qvox/qvox.h>

#include "support/event_log.h"
#include "support/input.h"
#include "support/memory_files.h"
#include "support/require.h"

namespace qvox_fuzz {
namespace {

enum Switch : unsigned { NO_NAMESPACES = 1, NAMESPACE_PREFIXES = 2, NO_HANDLERS = 4, ONCE = 8 };

void parse_without_handlers(qvox::SAXParser& parser) {
    try {
        parser.parse(memory_file_name(0));
    } catch (const qvox::QVOXException&) {
        // the document is refused
    }
}

}  // namespace

void run(Input input) {
    const unsigned switches = input.byte();
    for (std::size_t file = 0; file < OUTPUT_FILE; ++file) set_memory_file(file, input.piece());
    const int handle = next_handle();
    {
        qvox::SAXParser parser;
        parser.setFeature(qvox::FEATURE_NAMESPACES, (switches & NO_NAMESPACES) == 0);
        parser.setFeature(qvox::FEATURE_NAMESPACE_PREFIXES, (switches & NAMESPACE_PREFIXES) != 0);
        if ((switches & NO_HANDLERS) != 0) parse_without_handlers(parser);
        EventLog first;
        first.parse(parser, memory_file_name(0));
        if ((switches & ONCE) == 0) {
            EventLog second;
            second.parse(parser, memory_file_name(0));
            EventLog::require_same(first, second);
        }
    }
    require(next_handle() == handle, "a parse closes its files");
}

}  // namespace qvox_fuzz
