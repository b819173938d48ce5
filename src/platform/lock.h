// A lock that its holding thread can enter again.
#pragma once

#include <mutex>

namespace qvox {

using Lock = std::recursive_mutex;
using LockGuard = std::lock_guard<Lock>;

}  // namespace qvox
