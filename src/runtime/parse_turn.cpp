#include "runtime/parse_turn.h"

#include "platform/lock.h"
#include "runtime/report.h"

namespace qvox {

namespace {

Lock parseLock;           // held from before a parse's input is opened to after it is closed
bool hasRunning = false;  // a parse that waited for its turn is running; guarded by parseLock

}  // namespace

ParseTurn::ParseTurn(bool isConcurrent) : isHeld(false) {
    if (isConcurrent) return;
    parseLock.lock();
    if (hasRunning) {
        parseLock.unlock();  // the thread's own parse still holds it
        refuse_nested_parse();
    }
    hasRunning = true;
    isHeld = true;
}

void ParseTurn::end() {
    if (!isHeld) return;
    isHeld = false;
    hasRunning = false;
    parseLock.unlock();
}

void refuse_nested_parse() {
    qvox_report(REPORT_ERROR, QVOXException::INTERNAL_ERR, "parse already running");
}

}  // namespace qvox
