// Work on files side by side, and what comes of it in their order.
#pragma once

#include <cstddef>
#include <functional>

#include "file_check.h"

// Calls `work` for each number below `count`, on so many threads (0 for the number of cores), and
// `take`, on the thread of the caller, with what each returned, in order, as soon as those in front
// are done. What either throws ends the work and passes through.
void check_side_by_side(std::size_t count, unsigned jobs,
                        const std::function<CheckOutcome(std::size_t)>& work,
                        const std::function<void(const CheckOutcome&)>& take);
