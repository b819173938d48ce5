// What tests ask of the system beyond the standard library, for all systems.
#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <random>
#include <string>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#else
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace qvox_test::os {

#ifdef _WIN32

constexpr bool HAS_PIPES = false;  // with the names of files
constexpr const char* NULL_DEVICE = "NUL";
constexpr const char* FULL_DEVICE = nullptr;  // takes nothing

inline int duplicate(int descriptor) { return _dup(descriptor); }
inline void lead(int descriptor, int to) { _dup2(to, descriptor); }
inline void close(int descriptor) { _close(descriptor); }
inline int descriptor_of(std::FILE* file) { return _fileno(file); }
inline bool make_pipe(const char*) { return false; }
// Not in the root of the disk, where std::tmpfile() would make it.
inline std::FILE* temporary_file() { return std::fopen(_tempnam(nullptr, "qvox"), "w+bTD"); }

inline std::ptrdiff_t open_descriptors() {
    std::ptrdiff_t count = 0;
    for (int descriptor = 0; descriptor < 2048; ++descriptor) {
        if (_get_osfhandle(descriptor) != -1) ++count;
    }
    return count;
}

class OpenFilesLimit {
public:
    explicit OpenFilesLimit(unsigned files) { _setmaxstdio(static_cast<int>(files)); }
    OpenFilesLimit(const OpenFilesLimit&) = delete;
    OpenFilesLimit& operator=(const OpenFilesLimit&) = delete;
    ~OpenFilesLimit() { _setmaxstdio(before); }

private:
    const int before = _getmaxstdio();
};

#else

constexpr bool HAS_PIPES = true;
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

inline std::ptrdiff_t open_descriptors() {
    return std::distance(std::filesystem::directory_iterator("/dev/fd"),
                         std::filesystem::directory_iterator());
}

// A limit of the process for as long as the object lives.
class Limit {
public:
    Limit(int kind, unsigned most) : resource(kind) {
        getrlimit(resource, &before);
        const rlimit limit = {before.rlim_max < most ? before.rlim_max : most, before.rlim_max};
        setrlimit(resource, &limit);
    }
    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;
    ~Limit() { setrlimit(resource, &before); }

private:
    const int resource;
    rlimit before = {};
};

struct OpenFilesLimit : Limit {
    explicit OpenFilesLimit(unsigned files) : Limit(RLIMIT_NOFILE, files) {}
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

// Makes an empty folder for temporary files.
inline std::filesystem::path new_folder(const std::string& parent) {
    std::filesystem::path folder;
    do {
        folder = parent + "qvox-" + std::to_string(std::random_device()());
    } while (!std::filesystem::create_directory(folder));
    return folder;
}

}  // namespace qvox_test::os
