// What tests ask of the system beyond the standard library, for all systems.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN  // without macros that take common words
#include <io.h>
#include <windows.h>
#else
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

#include <gtest/gtest.h>

namespace qvox_test::os {

#ifdef _WIN32

constexpr bool HAS_WIDE_NAMES = true;  // files
constexpr bool HAS_PIPES = false;      // with the names of files
constexpr bool HAS_TERMINALS = false;  // a console takes no escape sequences
constexpr const char* NULL_DEVICE = "NUL";
constexpr const char* FULL_DEVICE = nullptr;  // takes nothing

inline int duplicate(int descriptor) { return _dup(descriptor); }
inline void lead(int descriptor, int to) { _dup2(to, descriptor); }
inline void close(int descriptor) { _close(descriptor); }
inline int descriptor_of(std::FILE* file) { return _fileno(file); }
inline bool make_pipe(const char*) { return false; }
// Not in the root of the disk, where std::tmpfile() would make it.
inline std::FILE* temporary_file() { return std::fopen(_tempnam(nullptr, "qvox"), "w+bTD"); }

class OpenFilesLimit {
public:
    explicit OpenFilesLimit(unsigned files) { _setmaxstdio(static_cast<int>(files)); }
    OpenFilesLimit(const OpenFilesLimit&) = delete;
    OpenFilesLimit& operator=(const OpenFilesLimit&) = delete;
    ~OpenFilesLimit() { _setmaxstdio(before); }

private:
    const int before = _getmaxstdio();
};

// Wine starts the shell of the system below, but tells nothing of its end: that is left to a file.
inline int run_shell(const std::filesystem::path& folder, const std::string& command) {
    std::string line = "/bin/sh -c \"" + command + "; echo $? >.code; mv .code .status\"";
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                       folder.string().c_str(), &start, &process) == 0) {
        return -1;
    }
    const std::filesystem::path file = folder / ".status";
    while (!std::filesystem::exists(file)) Sleep(1);
    int status = -1;
    std::ifstream(file) >> status;
    std::filesystem::remove(file);
    return status;
}

#else

constexpr bool HAS_WIDE_NAMES = false;
constexpr bool HAS_PIPES = true;
constexpr bool HAS_TERMINALS = true;
constexpr const char* NULL_DEVICE = "/dev/null";
constexpr const char* FULL_DEVICE = "/dev/full";

inline int duplicate(int descriptor) { return dup(descriptor); }
inline void lead(int descriptor, int to) { dup2(to, descriptor); }
inline void close(int descriptor) { ::close(descriptor); }
inline int descriptor_of(std::FILE* file) { return fileno(file); }
inline bool make_pipe(const char* name) {
    unlink(name);
    return mkfifo(name, 0600) == 0;
}
inline std::FILE* temporary_file() { return std::tmpfile(); }

// Runs a command in a folder and gives its exit status, or -1.
inline int run_shell(const std::filesystem::path& folder, const std::string& command) {
    const int status = std::system(("cd '" + folder.string() + "' && " + command).c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Of the process, for as long as the object lives.
class OpenFilesLimit {
public:
    explicit OpenFilesLimit(rlim_t files) {
        getrlimit(RLIMIT_NOFILE, &before);
        const rlimit limit = {std::min(before.rlim_max, files), before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    OpenFilesLimit(const OpenFilesLimit&) = delete;
    OpenFilesLimit& operator=(const OpenFilesLimit&) = delete;
    ~OpenFilesLimit() { setrlimit(RLIMIT_NOFILE, &before); }

private:
    rlimit before = {};
};

#endif

// The descriptor that the next file gets.
inline int next_descriptor() {
    const int descriptor = duplicate(0);
    close(descriptor);
    return descriptor;
}

// A descriptor leads to another file for as long as the object lives.
class Diversion {
public:
    Diversion(int diverted, std::FILE* to) : descriptor(diverted), own(duplicate(diverted)) {
        lead(descriptor, descriptor_of(to));
    }
    Diversion(const Diversion&) = delete;
    Diversion& operator=(const Diversion&) = delete;
    ~Diversion() {
        lead(descriptor, own);
        close(own);
    }

private:
    const int descriptor;
    const int own;
};

// The same for standard output. What the file hasn't taken by the end is lost.
class OutputDiversion {
public:
    explicit OutputDiversion(std::FILE* to) : diversion((std::fflush(stdout), 1), to) {}
    OutputDiversion(const OutputDiversion&) = delete;
    OutputDiversion& operator=(const OutputDiversion&) = delete;
    ~OutputDiversion() {
        if (std::fflush(stdout) == 0) return;
        std::FILE* const sink = std::fopen(NULL_DEVICE, "wb");
        lead(1, descriptor_of(sink));
        std::fflush(stdout);
        std::clearerr(stdout);
        std::fclose(sink);
    }

private:
    const Diversion diversion;
};

// Makes an empty folder for temporary files. Under Wine the variable names a parent that the shell
// of the system below finds too.
inline std::filesystem::path new_folder() {
    const char* const parent = std::getenv("QVOX_TMPDIR");
    std::filesystem::path folder;
    do {
        folder = parent != nullptr ? parent : testing::TempDir();
        folder /= "qvox-" + std::to_string(std::random_device()());
    } while (!std::filesystem::create_directory(folder));
    return folder;
}

}  // namespace qvox_test::os
