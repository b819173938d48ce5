// Runs the program qvox as a user would, from a shell, in a folder of its own.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/wait.h>

#include <gtest/gtest.h>

struct Result {
    int status;
    std::string out;
    std::string err;
};

inline bool operator==(const Result& a, const Result& b) {
    return a.status == b.status && a.out == b.out && a.err == b.err;
}

inline std::ostream& operator<<(std::ostream& stream, const Result& result) {
    return stream << "status " << result.status << "\n--- out\n"
                  << result.out << "--- err\n"
                  << result.err << "---";
}

inline std::string contents_of(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream) << file;
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

class ProgramTest : public testing::Test {
protected:
    ProgramTest() {
        std::string pattern = testing::TempDir() + "qvox-XXXXXX";
        EXPECT_NE(mkdtemp(pattern.data()), nullptr);
        folder = pattern;
    }
    ~ProgramTest() override { std::filesystem::remove_all(folder); }

    void file(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder / name, std::ios::binary) << bytes;
    }

    // Runs a shell script in which $QVOX is the program and $DATA the folder of the examples.
    Result shell(const std::string& script) const {
        file(".script", "QVOX=" QVOX_PROGRAM " DATA=" QVOX_EXAMPLE_DATA "\n" + script + "\n");
        const std::string command =
            "cd '" + folder.string() + "' && sh ./.script >.out 2>.err </dev/null";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents_of(folder / ".out"),
                contents_of(folder / ".err")};
    }

    Result qvox(const std::string& arguments) const { return shell("exec $QVOX " + arguments); }

    std::filesystem::path folder;
};
