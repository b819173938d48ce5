// Where report lines go, and the places of errors.
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <qvox/qvox.h>

#include "support/recorder.h"

namespace qvox_test {
namespace {

int code_of(const std::string& fileName) {
    try {
        qvox::DOMParser().free(qvox::DOMParser().parse(fileName.c_str()));
        return 0;
    } catch (const qvox::QVOXException& exception) {
        return exception.getCode();
    }
}

TEST(Report, OutputIsChosen) {
    write_file("report.xml", "<a>\n</b>");
    std::FILE* const file = std::fopen("report.txt", "w");
    const std::string standard = output_of([&] {
        EXPECT_EQ(qvox::setReportOutput(file), stdout);
        EXPECT_EQ(code_of("report.xml"), 10);
        EXPECT_EQ(qvox::setReportOutput(nullptr), file);
        std::fclose(file);
        EXPECT_EQ(code_of("report.xml"), 10);
        EXPECT_EQ(qvox::setReportOutput(stdout), nullptr);
        EXPECT_EQ(code_of("absent.xml"), 1);
    });
    EXPECT_EQ(read_file("report.txt"), "QVOX error : end tag (b) not match to start tag (a)\n");
    EXPECT_EQ(standard, "QVOX error : file (absent.xml) cannot open\n");
}

// Each line whole, and none on a stream that was closed.
TEST(Report, OutputChangesBesideParses) {
    constexpr int THREADS = 4;
    constexpr int ROUNDS = 200;
    std::vector<std::thread> threads;
    std::FILE* const first = std::fopen("lines0.txt", "w");
    qvox::setReportOutput(first);
    for (int i = 0; i < THREADS; ++i) {
        threads.emplace_back([name = std::string(1000, static_cast<char>('a' + i))] {
            for (int round = 0; round < ROUNDS; ++round) EXPECT_EQ(code_of(name), 1);
        });
    }
    for (int i = 1; i < 20; ++i) {
        const std::string name = "lines" + std::to_string(i) + ".txt";
        std::fclose(qvox::setReportOutput(std::fopen(name.c_str(), "w")));
    }
    for (std::thread& thread : threads) thread.join();
    std::fclose(qvox::setReportOutput(stdout));
    int lines = 0;
    for (int i = 0; i < 20; ++i) {
        const std::string all = read_file("lines" + std::to_string(i) + ".txt");
        for (std::size_t at = 0; at < all.size(); ++lines) {
            const std::size_t end = all.find('\n', at);
            const std::string name(1000, all[at + 19]);
            EXPECT_EQ(all.substr(at, end - at), "QVOX error : file (" + name + ") cannot open");
            at = end + 1;
        }
    }
    EXPECT_EQ(lines, THREADS * ROUNDS);
}

TEST(Report, PlacesOfErrors) {
    const struct {
        const char* bytes;
        int line;
        int column;
    } cases[] = {{"<a>\n <\xE4\xBA\x9C></b>\n</a>", 3, 9}, {"<a/>", 0, 0}, {"<a", 1, 1}};
    for (const auto& test : cases) {
        write_file("place.xml", test.bytes);
        output_of([] { code_of("place.xml"); });
        output_of([] { std::thread([] { code_of("absent.xml"); }).join(); });
        const qvox::ErrorPlace place = qvox::takeErrorPlace();
        EXPECT_EQ(place.line, test.line) << test.bytes;
        EXPECT_EQ(place.column, test.column) << test.bytes;
        EXPECT_EQ(qvox::takeErrorPlace().line, 0);
    }
}

}  // namespace
}  // namespace qvox_test
