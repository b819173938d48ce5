#include "temporary_file.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <random>
#include <system_error>

#ifdef _WIN32
#include <cstdio>
#else
#include <unistd.h>
#endif

namespace {

namespace fs = std::filesystem;

// The files that stand now, for the handler of signals. A command has three of them at most.
constexpr std::size_t MOST_FILES = 8;
std::array<std::atomic<const char*>, MOST_FILES> standing;

extern "C" {
static void remove_and_end(int signal) {
    for (const std::atomic<const char*>& name : standing) {
        const char* const path = name.load();
#ifdef _WIN32
        if (path != nullptr) std::remove(path);
#else
        if (path != nullptr) unlink(path);
#endif
    }
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}
}

// What is ignored, as under nohup, stays so.
void watch(int signal) {
    if (std::signal(signal, remove_and_end) == SIG_IGN) std::signal(signal, SIG_IGN);
}

void watch_signals() {
    for (const int signal : {SIGINT, SIGTERM}) watch(signal);
#ifndef _WIN32
    for (const int signal : {SIGHUP, SIGPIPE, SIGQUIT, SIGXCPU, SIGXFSZ}) watch(signal);
#endif
}

// No signal comes between the making of a file and its entry.
class SignalPause {
public:
#ifdef _WIN32
    SignalPause() = default;
#else
    SignalPause() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
    }
    SignalPause(const SignalPause&) = delete;
    SignalPause& operator=(const SignalPause&) = delete;
    ~SignalPause() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }

private:
    sigset_t before = {};
#endif
};

void enter(const char* name) {
    for (std::atomic<const char*>& place : standing) {
        const char* none = nullptr;
        if (place.compare_exchange_strong(none, name)) return;
    }
}

void strike_out(const char* name) {
    for (std::atomic<const char*>& place : standing) {
        const char* own = name;
        if (place.compare_exchange_strong(own, nullptr)) return;
    }
}

[[noreturn]] void fail() { throw std::system_error(errno, std::generic_category()); }

}  // namespace

TemporaryFile::TemporaryFile(const fs::path& folder) {
    static const bool isWatched = (watch_signals(), true);
    static_cast<void>(isWatched);

    const fs::path start = folder / ".qvox-";
    const SignalPause pause;
    do {
        name = start.string() + std::to_string(std::random_device()());
        file = std::fopen(name.c_str(), "wbx");
    } while (file == nullptr && errno == EEXIST);
    if (file == nullptr) fail();
    enter(name.c_str());
    std::error_code ignored;
    usual = fs::status(name, ignored).permissions();
    fs::permissions(name, fs::perms::owner_read | fs::perms::owner_write, ignored);
}

TemporaryFile::~TemporaryFile() {
    if (file != nullptr) std::fclose(file);
    if (name.empty()) return;
    const SignalPause pause;
    std::error_code ignored;
    fs::remove(name, ignored);
    forget();
}

void TemporaryFile::close() {
    std::FILE* const closed = file;
    file = nullptr;
    if (std::fclose(closed) != 0) fail();
}

void TemporaryFile::replace(const fs::path& target) {
    std::error_code ignored;
    const fs::file_status replaced = fs::status(target, ignored);
    fs::permissions(name, fs::exists(replaced) ? replaced.permissions() : usual);
    const SignalPause pause;
    fs::rename(name, target);
    forget();
}

void TemporaryFile::forget() {
    strike_out(name.c_str());
    name.clear();
}
