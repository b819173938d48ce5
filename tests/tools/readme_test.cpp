#include <filesystem>
#include <string>

#include "run_program.h"

namespace {

const std::filesystem::path PROJECT = std::filesystem::path(QVOX_EXAMPLE_DATA) / "../..";

// The README shows the example programs as they are compiled.
TEST(Readme, ShowsTheExamplesVerbatim) {
    const std::string readme = contents_of(PROJECT / "README.md");
    for (const char* const name : {"examples/events.cpp", "examples/tree.cpp"}) {
        const std::string example = contents_of(PROJECT / name);
        ASSERT_FALSE(example.empty()) << name;
        EXPECT_NE(readme.find("```cpp\n" + example + "```\n"), std::string::npos) << name;
    }
}

}  // namespace
