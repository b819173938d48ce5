// Documents that are cut off or changed in one byte. Each is accepted or refused with the library's
// own exception, and leaves nothing behind: no open file, and a parser that parses the next one.
#include <filesystem>

#include <gtest/gtest.h>

#include "support/recorder.h"
#include "support/system.h"

namespace qvox_test {
namespace {

class Robustness : public testing::Test {
protected:
    Robustness() {
        recorder.attach(parser);
        write_file("good.xml", "<g>\xE3\x81\x82</g>");
    }

    // Whether the file is accepted. Anything but a refusal by QVOXException itself fails the test.
    bool accepts(const char* file) {
        recorder.events.clear();
        const Outcome outcome = observe([&] { parser.parse(file); }, &recorder);
        EXPECT_EQ(outcome.events.find("error ") == std::string::npos, outcome.code == 0);
        return outcome.code == 0;
    }

    void expect_ready() {
        EXPECT_FALSE(parser.isParsing());
        EXPECT_TRUE(accepts("good.xml"));
        EXPECT_EQ(joined(recorder.events),
                  "startDocument; startElement - 'g' 'g'; characters '\xE3\x81\x82'; "
                  "endElement - 'g' 'g'; endDocument");
    }

    qvox::SAXParser parser;
    Recorder recorder;
};

// A document is complete behind the root element's end, at its earliest.
TEST_F(Robustness, Truncations) {
    const std::ptrdiff_t descriptors = os::open_descriptors();
    const std::pair<const char*, std::size_t> cases[] = {
        {"utf8", 1},    {"sjis", 7},    {"eucjp", 7},       {"iso2022jp", 3},
        {"utf16be", 7}, {"utf16le", 7}, {"utf16be-bom", 7}, {"utf16le-bom", 7}};
    for (const auto& [encoding, step] : cases) {
        const std::string whole =
            read_file(QVOX_EXAMPLE_DATA "/order-" + std::string(encoding) + ".xml");
        const bool wide = encoding[3] == '1';
        const std::size_t end = whole.rfind(wide ? std::string("<\0/", 3) : "</");
        ASSERT_NE(end, std::string::npos);
        write_file("cut.xml", whole);
        ASSERT_TRUE(accepts("cut.xml"));
        for (std::size_t size = whole.size() - 1; size >= step; size -= step) {
            std::filesystem::resize_file("cut.xml", size);
            EXPECT_FALSE(accepts("cut.xml") && size < end) << encoding << size;
            if (size % 16 == 0) expect_ready();
        }
    }
    EXPECT_EQ(os::open_descriptors(), descriptors);
}

TEST_F(Robustness, ChangedBytes) {
    const std::string document =
        "<?xml version='1.0' encoding='utf-8'?><!DOCTYPE a [<!ENTITY e 'x'><!ATTLIST a b CDATA "
        "#IMPLIED>]><p:a b='&lt;\xE3\x81\x82' xmlns:p='u'>&e;<!--c--><?t d?><![CDATA[d]]></p:a>\n";
    const std::ptrdiff_t descriptors = os::open_descriptors();
    for (std::size_t i = 0; i < document.size(); ++i) {
        for (int change = 255; change >= 0; --change) {
            std::string changed = document;
            changed[i] = static_cast<char>(changed[i] ^ change);
            write_file("changed.xml", changed);
            EXPECT_TRUE(accepts("changed.xml") || change != 0);
        }
        expect_ready();
    }
    EXPECT_EQ(os::open_descriptors(), descriptors);
}

}  // namespace
}  // namespace qvox_test
