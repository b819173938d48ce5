// The last error, the environment and what else is asked of the system.
#pragma once

namespace qvox {

// The value of the last failed system call of this thread (errno).
unsigned long last_system_error();

// Whether the environment has the variable, with any value.
bool environment_has(const char* name);

}  // namespace qvox
