// Runs the program qvox as a user would, from a shell, in a folder of its own.
#pragma once

#include <filesystem>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "support/encode.h"
#include "support/recorder.h"
#include "support/system.h"
#include "support/tables.h"

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

class ProgramTest : public testing::Test {
protected:
    ~ProgramTest() override { std::filesystem::remove_all(folder); }

    void file(const std::string& name, const std::string& bytes) const {
        qvox_test::write_file(folder.u8string() + '/' + name, bytes);
    }
    std::string contents_of(const std::string& name) const {
        return qvox_test::read_file(folder.u8string() + '/' + name);
    }

    // Runs a shell script in which $QVOX is the program and $DATA the folder of the examples.
    Result shell(const std::string& script) const {
        file(".script", "QVOX='" QVOX_PROGRAM "' DATA=" QVOX_EXAMPLE_DATA "\n" + script + "\n");
        const int status = qvox_test::os::run_shell(folder, "sh ./.script >.out 2>.err </dev/null");
        return {status, contents_of(".out"), contents_of(".err")};
    }

    Result qvox(const std::string& arguments) const { return shell("exec $QVOX " + arguments); }

    // What a command of the program writes about a good document.
    std::string told(const std::string& command, const std::string& document) const {
        file("f.xml", document);
        const Result result = qvox(command + " f.xml");
        EXPECT_EQ(result.status, 0) << document;
        EXPECT_EQ(result.err, "") << document;
        return result.out;
    }

    // Rows of arguments, a document, what the program writes about it, and its errors and warnings.
    // The document is the file f.xml, in UTF-16. Where nothing is written the status is 1. \\xHH is
    // a byte.
    void expect_runs(const char* table) const {
        for (qvox_test::Row row : qvox_test::rows_of(table)) {
            row.resize(4);
            const std::u16string text = qvox::Xstring::fromUtf8(unescaped(row[1])).u16_str();
            file("f.xml", qvox_test::utf16le(u"\uFEFF" + text));
            const int status = row[2].empty() ? 1 : 0;
            EXPECT_EQ(qvox(row[0] + " f.xml"),
                      (Result{status, unescaped(row[2]), unescaped(row[3])}))
                << row[1];
        }
    }

    // Rows of a shell script, its status, what it writes, and its errors.
    void expect_results(const char* table) const {
        for (qvox_test::Row row : qvox_test::rows_of(table)) {
            row.resize(4);
            if (!runs_here(row[0])) continue;
            EXPECT_EQ(shell(row[0]),
                      (Result{std::stoi(row[1]), unescaped(row[2]), unescaped(row[3])}))
                << row[0];
        }
    }

    // Windows opens nothing by the name of a device here, and its standard output is never closed.
    static bool runs_here(const std::string& script) {
        bool runs = true;
        for (const char* const use : {"/dev/stdin", "-o /dev/full", ">&-"}) {
            runs = runs && script.find(use) == std::string::npos;
        }
        return runs || qvox_test::os::HAS_PIPES;
    }

    static std::string unescaped(const std::string& escaped) {
        const std::string text = qvox_test::unescaped(escaped);
        std::string out;
        for (std::string::size_type at = 0; at < text.size(); ++at) {
            const bool isByte = text.compare(at, 2, "\\x") == 0;
            out += isByte ? static_cast<char>(std::stoi(text.substr(at + 2, 2), nullptr, 16))
                          : text[at];
            if (isByte) at += 3;
        }
        return out;
    }

    const std::filesystem::path folder = qvox_test::os::new_folder();
};
