// Runs with a fault, each in a process of its own.
#pragma once

#include <functional>
#include <string>

namespace qvox_test {

// Something that works on the library and says what came of it, the same each time.
using Scenario = std::function<std::string()>;

struct FaultyRun {
    // "same result", "result" and what else the scenario gave, "bad_alloc", "exception" and its
    // code and message, "fatal" and the report with which the process ended, or "killed" and the
    // signal.
    std::string outcome;
    bool hadFault = false;
    // Allocations and open files that are left behind, and how a run without the fault, on another
    // thread, differs from `expected`.
    std::string damage;
};

// `prepare` and `repair` begin and end the fault in the new process; `repair` says whether it came
// about.
FaultyRun run_with_fault(const Scenario& scenario, const std::string& expected,
                         const std::function<void()>& prepare, const std::function<bool()>& repair);

}  // namespace qvox_test
