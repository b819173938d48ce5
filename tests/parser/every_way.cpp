// All tests of parsers again, in each way in which a document can be read; and then their documents
// cut off at every byte, read in all ways and compared.
#include <iostream>
#include <set>
#include <string>

#include <gmock/gmock.h>

#include "input/reading.h"
#include "support/recorder.h"

namespace qvox_test {
namespace {

using qvox::Reading;
using qvox::reading_of_thread;

// The first is the definition of all others.
constexpr Reading WAYS[] = {{0, false}, {64, false}, {64, true}, {250, true}};
constexpr std::size_t LONGEST_CUT = 200;

std::set<std::string> documents;

void keep(const std::string& document) {
    if (document.size() <= LONGEST_CUT) documents.insert(document);
}

class EveryWay : public testing::Environment {
public:
    void SetUp() override {
        reading_of_thread() = WAYS[round];
        std::cout << "==== windows of " << WAYS[round].windowUnits << " units"
                  << (WAYS[round].byPieces ? ", by pieces\n" : "\n");
        documentSeen = round == 0 ? keep : nullptr;
        ++round;
    }

    void TearDown() override {
        if (round == std::size(WAYS)) cut_documents();
    }

private:
    static Outcome read(const Reading& way, const std::string& document) {
        reading_of_thread() = way;
        return parse_bytes(document);
    }

    static void cut_documents() {
        EXPECT_GT(documents.size(), 300U);
        for (const std::string& document : documents) {
            for (std::size_t size = 0; size < document.size(); ++size) {
                const std::string piece = document.substr(0, size);
                const Outcome exact = read(WAYS[0], piece);
                const Outcome other = read(WAYS[2], piece);
                EXPECT_EQ(exact.events, other.events) << piece;
                EXPECT_EQ(exact.message, other.message) << piece;
                EXPECT_EQ(exact.output, other.output) << piece;
            }
        }
    }

    std::size_t round = 0;
};

}  // namespace
}  // namespace qvox_test

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    if (!testing::GTEST_FLAG(list_tests)) {
        testing::GTEST_FLAG(repeat) = static_cast<int>(std::size(qvox_test::WAYS));
        testing::GTEST_FLAG(recreate_environments_when_repeating) = true;
    }
    testing::AddGlobalTestEnvironment(new qvox_test::EveryWay);
    return RUN_ALL_TESTS();
}
