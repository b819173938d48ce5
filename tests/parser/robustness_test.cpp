// Documents that are cut off or changed in one byte. Each is accepted or refused with the library's
// own exception, and leaves nothing behind: no open file, and a parser that parses the next one.
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "support/recorder.h"

namespace qvox_test {
namespace {

namespace fs = std::filesystem;

std::ptrdiff_t open_descriptors() {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

class Robustness : public testing::Test {
protected:
    Robustness() {
        recorder.attach(parser);
        write_file("good.xml", "<g>\xE3\x81\x82</g>");
    }

    // Whether the file is accepted. Anything but a refusal by QVOXException itself fails the test.
    bool accepts(const char* file) {
        recorder.events.clear();
        try {
            parser.parse(file);
            return true;
        } catch (const qvox::SAXException&) {
            ADD_FAILURE();
        } catch (const qvox::QVOXException&) {
            EXPECT_NE(recorder.events.find("error "), std::string::npos);
        }
        return false;
    }

    void expect_ready() {
        EXPECT_FALSE(parser.isParsing());
        EXPECT_TRUE(accepts("good.xml"));
        EXPECT_EQ(joined(recorder.events),
                  "startDocument; startElement - 'g' 'g'; "
                  "characters '\xE3\x81\x82'; endElement - 'g' 'g'; "
                  "endDocument");
    }

    qvox::SAXParser parser;
    Recorder recorder;
};

// A document is complete behind the root element's end, at its earliest.
TEST_F(Robustness, Truncations) {
    const std::ptrdiff_t descriptors = open_descriptors();
    output_of([this] {
        const struct {
            const char* encoding;
            std::size_t step;
        } cases[] = {{"utf8", 1},    {"sjis", 7},    {"eucjp", 7},       {"iso2022jp", 3},
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
                fs::resize_file("cut.xml", size);
                EXPECT_FALSE(accepts("cut.xml") && size < end) << encoding << size;
                if (size % 16 == 0) expect_ready();
            }
        }
    });
    EXPECT_EQ(open_descriptors(), descriptors);
}

TEST_F(Robustness, ChangedBytes) {
    const std::string document =
        "<?xml version='1.0' encoding='utf-8'?><!DOCTYPE a [<!ENTITY e 'x'><!ATTLIST a b CDATA "
        "#IMPLIED>]><p:a b='&lt;\xE3\x81\x82' xmlns:p='u'>&e;<!--c--><?t d?><![CDATA[d]]></p:a>\n";
    const std::ptrdiff_t descriptors = open_descriptors();
    write_file("changed.xml", document);
    output_of([&] {
        for (std::size_t i = 0; i < document.size(); ++i) {
            for (int change = 255; change >= 0; --change) {
                std::fstream file("changed.xml", std::ios::in | std::ios::out | std::ios::binary);
                file.seekp(static_cast<std::streamoff>(i))
                    .put(static_cast<char>(document[i] ^ change));
                file.close();
                EXPECT_TRUE(accepts("changed.xml") || change != 0);
            }
            expect_ready();
        }
    });
    EXPECT_EQ(open_descriptors(), descriptors);
}

}  // namespace
}  // namespace qvox_test
