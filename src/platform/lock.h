// A lock that its holding thread can enter again.
#pragma once

#include <mutex>

namespace qvox {

using Lock = std::recursive_mutex;

}  // namespace qvox
