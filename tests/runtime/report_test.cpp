// Where report lines go, and the places of errors.
#include <cstdio>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include <qvox/qvox.h>

#include "support/recorder.h"
#include "support/tables.h"

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
    std::FILE* const file = std::fopen("report.txt", "wb");
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
    const std::string name(1000, 'n');
    const std::string line = "QVOX error : file (" + name + ") cannot open\n";
    const auto file_of = [](int i) { return "lines" + std::to_string(i) + ".txt"; };
    std::vector<std::thread> threads;
    qvox::setReportOutput(std::fopen(file_of(0).c_str(), "wb"));
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&name] {
            for (int round = 0; round < 200; ++round) EXPECT_EQ(code_of(name), 1);
        });
    }
    for (int i = 1; i < 20; ++i) {
        std::fclose(qvox::setReportOutput(std::fopen(file_of(i).c_str(), "wb")));
    }
    for (std::thread& thread : threads) thread.join();
    std::fclose(qvox::setReportOutput(stdout));
    std::string all;
    for (int i = 0; i < 20; ++i) all += read_file(file_of(i));
    EXPECT_EQ(all, times(800, line));
}

TEST(Report, PlacesOfErrors) {
    for (const auto& [bytes, line, column] :
         {std::tuple("<a>\n <亜></b>\n</a>", 3, 9), {"<a/>", 0, 0}, {"<a", 1, 1}}) {
        write_file("place.xml", bytes);
        output_of([] { code_of("place.xml"); });
        output_of([] { std::thread([] { code_of("absent.xml"); }).join(); });
        const qvox::ErrorPlace place = qvox::takeErrorPlace();
        EXPECT_EQ(place.line, line) << bytes;
        EXPECT_EQ(place.column, column) << bytes;
        EXPECT_EQ(qvox::takeErrorPlace().line, 0);
    }
}

}  // namespace
}  // namespace qvox_test
