#include "input/expansion.h"

#include <algorithm>

#include "runtime/report.h"

namespace qvox {

void Expansion::check() {
    limit = std::max(FREE, LARGEST_RATIO * (closedAmount + levels.amount_read()));
    if (expanded > limit) {
        qvox_report(REPORT_ERROR, QVOXException::INVALID_ENTITY_REF_ERR,
                    "entity expansion too large");
    }
}

}  // namespace qvox
