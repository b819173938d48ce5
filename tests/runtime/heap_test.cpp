// The heap of a parse: where its memory comes from, and the statistics.
#include "runtime/heap.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <regex>

#include <gtest/gtest.h>

#include "runtime/allocation.h"
#include "support/recorder.h"

namespace qvox {
namespace {

class HeapTest : public testing::Test {
protected:
    HeapTest() : heap(std::make_unique<Heap>()) { memstatEnabled = true; }
    ~HeapTest() override { memstatEnabled = false; }

    unsigned char* take(std::size_t size, std::size_t align = 0) {
        return static_cast<unsigned char*>(heap->halloc(size, align));
    }
    // The blocks that `action` makes.
    template <typename Action>
    static std::size_t blocks(Action action) {
        const std::size_t before = allocationStatistics.heapBlockCount;
        action();
        return allocationStatistics.heapBlockCount - before;
    }

    std::unique_ptr<Heap> heap;
};

TEST_F(HeapTest, FirstFit) {
    unsigned char* const first = take(60000);
    unsigned char* second = nullptr;
    EXPECT_EQ(blocks([&] { second = take(10000); }), 1U);  // the first stays open
    EXPECT_EQ(take(5000), first + 60000);
    EXPECT_EQ(take(55536), second + 10000);  // exactly what remains
    EXPECT_EQ(take(535), first + 65000);
    EXPECT_EQ(blocks([&] { EXPECT_EQ(take(1), first + 65535); }), 0U);
    EXPECT_EQ(blocks([&] { take(1); }), 1U);
}

TEST_F(HeapTest, PaddingCountsAsRoom) {
    unsigned char* const first = take(65527, 4);
    EXPECT_EQ(take(4, 4), first + 65528);
    EXPECT_EQ(take(1, 0), first + 65532);
    EXPECT_EQ(blocks([&] { take(3, 2); }), 1U);  // 3 bytes are left, but not behind a padding
    EXPECT_EQ(take(2, 2), first + 65534);
    for (const std::size_t align : {1U, 2U, 4U, 8U, 16U}) {
        take(3);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(take(7, align)) % align, 0U);
    }
}

TEST_F(HeapTest, LargeRequestsHaveBlocksOfTheirOwn) {
    unsigned char* const first = take(65535);
    for (const std::size_t size : {65536U, 65537U, 4194304U}) {
        const std::size_t before = allocationStatistics.heapTotalSize;
        EXPECT_EQ(blocks([&] { std::memset(take(size, 4), 0x5A, size); }), 1U);
        EXPECT_LT(allocationStatistics.heapTotalSize - before, size + 100);
    }
    EXPECT_EQ(blocks([&] { EXPECT_EQ(take(1), first + 65535); }), 0U);
    EXPECT_EQ(blocks([&] { take(1); }), 1U);
    for (const std::size_t size : {std::size_t{0}, std::size_t{4194305}, ~std::size_t{0}}) {
        const auto outcome = qvox_test::observe([&] { take(size); });
        EXPECT_EQ(outcome.code, QVOXException::ALLOC_ERR);
        EXPECT_EQ(outcome.message, "illegal halloc size (" + std::to_string(size) + ")");
    }
    std::memset(heap->halloc_any(4194305, 8), 0, 4194305);
    heap->halloc_text(3000000)[3000000] = 0;
}

// The figures are those of the process so far.
TEST_F(HeapTest, StatisticsGrowFromParseToParse) {
    qvox_test::write_file("doc.xml", "<r/>");
    const std::regex statistics(
        "memory statistics :\n    heap block alloc count = (\\d+)\n"
        "    heap total size = (\\d+)\n    qvox_malloc lower = [0-9a-f]+\n"
        "    qvox_malloc upper = [0-9a-f]+\n    qvox_malloc count = (\\d+)\n"
        "    qvox_malloc max size = \\d+\n    qvox_malloc total size = "
        "(\\d+)\n");
    const auto output = [] { return qvox_test::output_of([] { SAXParser().parse("doc.xml"); }); };
    const std::string outputs[] = {output(), output()};
    std::smatch first;
    std::smatch second;
    ASSERT_TRUE(std::regex_match(outputs[0], first, statistics)) << outputs[0];
    ASSERT_TRUE(std::regex_match(outputs[1], second, statistics)) << outputs[1];
    for (std::size_t i = 1; i <= 4; ++i) EXPECT_GT(std::stoul(second[i]), std::stoul(first[i]));
}

}  // namespace
}  // namespace qvox
