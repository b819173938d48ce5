#include "platform/system.h"

#include <cerrno>
#include <cstdlib>

namespace qvox {

unsigned long last_system_error() { return static_cast<unsigned long>(errno); }

bool environment_has(const char* name) { return std::getenv(name) != nullptr; }

}  // namespace qvox
