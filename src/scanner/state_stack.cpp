#include "scanner/state_stack.h"

#include <cstddef>

#include "runtime/allocation.h"

namespace qvox {

int* stateStack = nullptr;
int stateTop = 0;
int stateFrame = 0;

namespace {

constexpr int FIRST_CAPACITY = 256;
int stateCap = 0;  // entries that fit

std::size_t bytes_for(int entries) { return static_cast<std::size_t>(entries) * sizeof(int); }

void push_entry(int entry) {
    if (stateTop == stateCap) {
        stateStack = static_cast<int*>(qvox_realloc(stateStack, bytes_for(2 * stateCap)));
        stateCap *= 2;
    }
    stateStack[stateTop++] = entry;
}

}  // namespace

void state_stack_create() {
    stateStack = static_cast<int*>(qvox_malloc(bytes_for(FIRST_CAPACITY)));
    stateCap = FIRST_CAPACITY;
    stateTop = 0;
    stateFrame = 0;
}

void state_stack_destroy() {
    if (stateStack != nullptr) qvox_free(stateStack);
    stateStack = nullptr;
    stateCap = 0;
    stateTop = 0;
}

void push_frame(MainState main) {
    push_entry(stateFrame);
    stateFrame = stateTop;
    push_entry(main);
    push_entry(SUB_START);
}

void pop_frame() {
    stateTop = stateFrame - 1;
    stateFrame = stateStack[stateTop];
}

void push_sub(SubState sub) { push_entry(sub); }

}  // namespace qvox
