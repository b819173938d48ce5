#include "scanner/state_stack.h"

#include <cstddef>

#include "runtime/allocation.h"

namespace qvox {

namespace {

constexpr int FIRST_CAPACITY = 256;

std::size_t bytes_for(int entries) { return static_cast<std::size_t>(entries) * sizeof(int); }

}  // namespace

StateStack::StateStack()
    : stateStack(static_cast<int*>(qvox_malloc(bytes_for(FIRST_CAPACITY)))),
      stateTop(0),
      stateFrame(0),
      stateCap(FIRST_CAPACITY) {}

StateStack::~StateStack() { qvox_free(stateStack); }

void StateStack::grow() {
    stateStack = static_cast<int*>(qvox_realloc(stateStack, bytes_for(2 * stateCap)));
    stateCap *= 2;
}

}  // namespace qvox
