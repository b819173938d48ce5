#include "input/expansion.h"

#include <algorithm>

#include "input/input_stack.h"
#include "runtime/report.h"

namespace qvox {

unsigned long long expandedUnits = 0;
unsigned long long expansionLimit = FREE_EXPANSION;

namespace {

unsigned long long closedAmount = 0;  // bytes or units read from levels that have ended

unsigned long long amount_read() {
    unsigned long long amount = closedAmount;
    for (const InputLevel& level : inputStack) amount += amount_read_of(level);
    return amount;
}

}  // namespace

void expansion_start() {
    expandedUnits = 0;
    expansionLimit = FREE_EXPANSION;
    closedAmount = 0;
}

void count_read(unsigned long long amount) { closedAmount += amount; }

void check_expansion() {
    expansionLimit = std::max(FREE_EXPANSION, LARGEST_EXPANSION_RATIO * amount_read());
    if (expandedUnits > expansionLimit) {
        qvox_report(REPORT_ERROR, QVOXException::INVALID_ENTITY_REF_ERR,
                    "entity expansion too large");
    }
}

}  // namespace qvox
