// What is written can be read again: the same tree comes of it.
#include <filesystem>

#include <gtest/gtest.h>

#include "support/tables.h"
#include "support/tree_text.h"
#include "writer/written.h"

namespace qvox_test {
namespace {

// Two forms of the whole tree without its document type, because each has its blind spots: one cuts
// names, the other comes from the writer itself. A default that was written is an attribute like
// any other, and texts that a text declaration parted are one.
std::string described(const Parsed& parsed) {
    if (qvox::Node* const type = parsed.document->getDoctype()) {
        qvox::DOMParser().freeNode(parsed.document->removeChild(type));
    }
    parsed.document->normalize();
    return replaced(tree_text(parsed.document), "'\\*", "'") + in_memory(parsed.document);
}

// No output encoding takes a surrogate pair to the parser: the one character of that kind in the
// examples gives way to its usual form.
std::string without_pairs(std::string bytes) {
    for (const auto& [from, to] : {std::pair(utf8(u"&#x20BB7;"), utf8(u"&#x5409;")),
                                   {utf16le(u"&#x20BB7;"), utf16le(u"&#x5409;")}}) {
        const std::size_t at = bytes.find(from);
        if (at != std::string::npos) bytes.replace(at, from.size(), to);
    }
    return bytes;
}

// The last document has its declarations and texts in files beside it. What the output has of the
// external subset is then read twice, which gives warnings.
TEST(RoundTrip, ExampleDocuments) {
    for (const auto& entry : std::filesystem::directory_iterator(QVOX_EXAMPLE_DATA)) {
        write_file(entry.path().filename().string(),
                   without_pairs(read_file(entry.path().string())));
    }
    for (const std::string name : {"order-utf8.xml", "order-sjis.xml", "order-eucjp.xml",
                                   "order-iso2022jp.xml", "order.xml"}) {
        const std::string warnings = output_of([&name] {
            for (const std::string encoding : {"UTF-16", "Shift_JIS", "EUC-JP"}) {
                const Parsed parsed(name.c_str());
                parsed.document->getFirstChild()->setNodeValue(
                    ("version=\"1.0\" encoding=\"" + encoding + '"').c_str());
                in_file(parsed.document);
                EXPECT_EQ(described(Parsed("written.xml")), described(parsed));
            }
        });
        EXPECT_EQ(warnings.empty(), name != "order.xml") << warnings;
        EXPECT_EQ(warnings.find("error"), std::string::npos) << warnings;
    }
}

}  // namespace
}  // namespace qvox_test
