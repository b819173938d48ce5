#include "input/reading.h"

namespace qvox {

namespace {

thread_local Reading readingOfThread;

}  // namespace

Reading& reading_of_thread() { return readingOfThread; }

}  // namespace qvox
