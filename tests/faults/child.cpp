#include "faults/child.h"

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <new>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

#include "faults/allocations.h"
#include "support/encode.h"
#include "support/recorder.h"

namespace qvox_test {

namespace {

constexpr unsigned PATIENCE = 60;  // seconds
constexpr const char* REPORT = "child.txt";
constexpr const char* OUTPUT = "child-output.txt";

std::string outcome_of(const Scenario& scenario) {
    try {
        return "result " + scenario();
    } catch (const std::bad_alloc&) {
        return "bad_alloc";
    } catch (const qvox::QVOXException& exception) {
        return "exception " + std::to_string(exception.getCode()) + ' ' +
               quoted(exception.getMessage());
    }
}

std::ptrdiff_t open_descriptors() {
    return std::distance(std::filesystem::directory_iterator("/dev/fd"),
                         std::filesystem::directory_iterator());
}

std::string difference(const char* what, long before, long after) {
    return before == after ? "" : what + std::to_string(after - before) + "; ";
}

// In the child. The first line is the outcome, or none for a run without fault, the second the
// damage.
std::string report_on(const Scenario& scenario, const std::string& expected,
                      const std::function<void()>& prepare, const std::function<bool()>& repair) {
    std::thread([] {}).join();  // the system keeps what the first thread needed for the next one
    const std::ptrdiff_t files = open_descriptors();
    std::string outcome;
    outcome.reserve(1 << 20);
    const long blocks = live_blocks();
    prepare();
    {
        const std::string faulty = outcome_of(scenario);
        outcome += faulty == "result " + expected ? "same result" : faulty;
    }
    const bool hadFault = repair();
    std::string damage = difference("blocks lost: ", blocks, live_blocks()) +
                         difference("files open: ", files, open_descriptors());
    if (!hadFault) return '\n' + damage + '\n';
    std::string next;
    std::thread([&] { next = outcome_of(scenario); }).join();
    if (next != "result " + expected) damage += "next run: " + joined(next + '\n');
    return joined(outcome + '\n') + '\n' + damage + '\n';
}

std::string ending_of(int status) {
    const std::string output = read_file(OUTPUT);
    const std::size_t report = output.find("QVOX fatal error : ");
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT && report != std::string::npos) {
        return "fatal " + output.substr(report + 19, output.find('\n', report) - report - 19);
    }
    return "killed " + std::to_string(WIFSIGNALED(status) ? WTERMSIG(status) : status);
}

}  // namespace

FaultyRun run_with_fault(const Scenario& scenario, const std::string& expected,
                         const std::function<void()>& prepare,
                         const std::function<bool()>& repair) {
    write_file(REPORT, "");
    write_file(OUTPUT, "");
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        alarm(PATIENCE);
        if (std::freopen(OUTPUT, "w", stdout) == nullptr) _exit(2);
        std::printf("\n");  // which gets the stream its buffer
        write_file(REPORT, report_on(scenario, expected, prepare, repair));
        _exit(0);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return {ending_of(status), true, ""};
    const std::string report = read_file(REPORT);
    const std::size_t end = report.find('\n');
    FaultyRun run;
    run.outcome = report.substr(0, end);
    run.hadFault = end != 0;
    run.damage = report.substr(end + 1, report.size() - end - 2);
    return run;
}

}  // namespace qvox_test
