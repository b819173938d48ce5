#include <filesystem>
#include <string>

#include "run_program.h"

namespace {

const std::filesystem::path PROJECT = std::filesystem::path(QVOX_EXAMPLE_DATA) / "../..";

// The README shows the example program as it is compiled.
TEST(Readme, ShowsTheExampleVerbatim) {
    const std::string example = contents_of(PROJECT / "examples/events.cpp");
    ASSERT_FALSE(example.empty());
    EXPECT_NE(contents_of(PROJECT / "README.md").find("```cpp\n" + example + "```\n"),
              std::string::npos);
}

}  // namespace
