// SAX parses by the two ways through a document, and windows of all sizes: every document is read
// character by character, then by pieces over windows, and what is told has to be the same: events,
// arguments, reports, and the place at each event. Input: a byte of switches, then the document and
// up to three external pieces, with separators between them (support/input.h); the document names
// the pieces by their system identifiers (support/memory_files.h). The bytes of the document are
// also converted, as a text in Shift_JIS and as units.
#include <cstring>
#include <string>
#include <vector>

#include <qvox/qvox.h>

#include "input/reading.h"
#include "runtime/report.h"
#include "support/event_log.h"
#include "support/input.h"
#include "support/memory_files.h"
#include "support/require.h"
#include "support/trees.h"

namespace qvox_fuzz {
namespace {

using qvox::Xstring;

enum Switch : unsigned { NO_NAMESPACES = 1, NAMESPACE_PREFIXES = 2, IN_MEMORY = 4, TWICE = 8 };

// A window that is cut all the time, one of an odd size, and the usual one.
constexpr qvox::Reading WAYS[] = {{64, true}, {64, false}, {203, true}, {16384, true}};
constexpr qvox::Reading EXACT = {0, false};

// Asks for the place at every event.
class PlacedLog final : public EventLog {
protected:
    void event(const char* name, std::initializer_list<const Text*> texts) override {
        EventLog::event(name, texts);
        if (isAsking) return;
        isAsking = true;
        qvox::qvox_report(qvox::REPORT_WARNING, 0, "here");
        isAsking = false;
    }

private:
    bool isAsking = false;
};

void parse(const qvox::Reading& way, unsigned switches, EventLog& log) {
    qvox::reading_of_thread() = way;
    qvox::SAXParser parser;
    parser.setFeature(qvox::FEATURE_NAMESPACES, (switches & NO_NAMESPACES) == 0);
    parser.setFeature(qvox::FEATURE_NAMESPACE_PREFIXES, (switches & NAMESPACE_PREFIXES) != 0);
    if ((switches & TWICE) != 0) EventLog().parse(parser, memory_file_name(0));
    log.parse(parser, memory_file_name(0));
}

// The tree of a document in memory, or what is wrong with that.
std::string tree(const qvox::Reading& way, const Xstring& text) {
    qvox::reading_of_thread() = way;
    qvox::DOMParser parser;
    try {
        qvox::Document* document = parser.parse(const_cast<unsigned short*>(text.data()));
        const std::string result = shown(document);
        parser.free(document);
        return result;
    } catch (const qvox::QVOXException& exception) {
        return exception.getMessage().utf8();
    }
}

// In a buffer of exactly the size that the interface asks for.
template <typename Result, typename Byte>
std::string converted(const Xstring& text, Result* (Xstring::*convert)(Byte*) const) {
    std::vector<char> bytes(2 * static_cast<std::size_t>(text.length()) + 1);
    (text.*convert)(static_cast<Byte*>(static_cast<void*>(bytes.data())));
    return bytes.data();
}

void check_conversions(const Xstring& text) {
    const std::string sjis = converted(text, &Xstring::sjis_str);
    require(converted(Xstring(sjis.c_str()), &Xstring::sjis_str) == sjis, "Shift_JIS comes back");
    converted(text, &Xstring::os_str);
    converted(text, &Xstring::euc_str);
    converted(text, &Xstring::jis_str);
    converted(text, &Xstring::ascii_str);
    std::vector<unsigned short> units(static_cast<std::size_t>(text.length()) + 1);
    text.unicode_str(units.data());
    require(units.back() == 0, "a NUL stands behind the units");
}

}  // namespace

void run(Input input) {
    const unsigned switches = input.byte();
    std::string document;
    for (std::size_t file = 0; file < OUTPUT_FILE; ++file) {
        const std::string piece = input.piece();
        if (file == 0) document = piece;
        set_memory_file(file, piece);
    }
    std::vector<unsigned short> units(document.size() / 2 + 1);
    std::memcpy(units.data(), document.data(), document.size() / 2 * 2);
    check_conversions(document.c_str());
    check_conversions(units.data());
    const int handle = next_handle();
    PlacedLog exact;
    parse(EXACT, switches, exact);
    for (const qvox::Reading& way : WAYS) {
        PlacedLog other;
        parse(way, switches, other);
        EventLog::require_same(exact, other);
    }
    require(next_handle() == handle, "a parse closes its files");
    if ((switches & IN_MEMORY) == 0) return;
    const Xstring text = Xstring::fromUtf8(document);
    const std::string asIs = tree(EXACT, text);
    for (const qvox::Reading& way : WAYS) {
        require(asIs == tree(way, text), "a document in memory gives the same tree");
    }
}

}  // namespace qvox_fuzz
