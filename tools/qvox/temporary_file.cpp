#include "temporary_file.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <random>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

#include "file_name.h"

namespace {

namespace fs = std::filesystem;

// The files that stand now, for the handler of signals. A command has three of them at most.
constexpr std::size_t MOST_FILES = 8;
using Path = const fs::path::value_type;
std::array<std::atomic<Path*>, MOST_FILES> standing;

extern "C" {
static void remove_and_end(int signal) {
    for (const std::atomic<Path*>& entry : standing) {
        Path* const path = entry.load();
#ifdef _WIN32
        if (path != nullptr) _wunlink(path);
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
    SignalPause(const SignalPause&) = delete;
    SignalPause& operator=(const SignalPause&) = delete;
#ifdef _WIN32
    // There only a key of the user's comes as a signal.
    SignalPause() : before(std::signal(SIGINT, SIG_IGN)) {}
    ~SignalPause() { std::signal(SIGINT, before); }

private:
    void (*const before)(int);
#else
    SignalPause() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
    }
    ~SignalPause() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }

private:
    sigset_t before = {};
#endif
};

void enter(Path* path) {
    for (std::atomic<Path*>& entry : standing) {
        Path* none = nullptr;
        if (entry.compare_exchange_strong(none, path)) return;
    }
}

void strike_out(Path* path) {
    for (std::atomic<Path*>& entry : standing) {
        Path* own = path;
        if (entry.compare_exchange_strong(own, nullptr)) return;
    }
}

[[noreturn]] void fail() { throw std::system_error(errno, std::generic_category()); }

}  // namespace

TemporaryFile::TemporaryFile(const fs::path& folder) {
    static const bool isWatched = (watch_signals(), true);
    static_cast<void>(isWatched);

    const SignalPause pause;
    do {
        place = folder / (".qvox-" + std::to_string(std::random_device()()));
        file = make_file(place);
    } while (file == nullptr && errno == EEXIST);
    if (file == nullptr) fail();
    name = name_of(place);
    enter(place.c_str());
    std::error_code ignored;
    usual = fs::status(place, ignored).permissions();
    fs::permissions(place, fs::perms::owner_read | fs::perms::owner_write, ignored);
}

TemporaryFile::~TemporaryFile() {
    if (file != nullptr) std::fclose(file);
    if (place.empty()) return;
    const SignalPause pause;
    std::error_code ignored;
    fs::remove(place, ignored);
    forget();
}

void TemporaryFile::fill(std::FILE* from) {
    char block[65536];
    for (std::size_t size = sizeof block; size == sizeof block;) {
        size = std::fread(block, 1, sizeof block, from);
        if (std::fwrite(block, 1, size, file) != size) fail();
    }
    if (std::ferror(from) != 0) fail();
    close();
}

void TemporaryFile::close() {
    std::FILE* const closed = file;
    file = nullptr;
    if (std::fclose(closed) != 0) fail();
}

void TemporaryFile::replace(const fs::path& target) {
    std::error_code ignored;
    const fs::file_status replaced = fs::status(target, ignored);
    fs::permissions(place, fs::exists(replaced) ? replaced.permissions() : usual);
    const SignalPause pause;
    replace_file(place, target);
    forget();
}

void TemporaryFile::forget() {
    strike_out(place.c_str());
    place.clear();
}
