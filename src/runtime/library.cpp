#include "runtime/library.h"

#include <mutex>

#include "platform/system.h"
#include "runtime/allocation.h"
#include "runtime/report.h"
#include "text/conversion_buffer.h"

namespace qvox {

namespace {

std::mutex countLock;
int parserCount = 0;  // live parsers; guarded by countLock

// Load and unload of the library are the construction and destruction of this object.
struct Lifetime {
    Lifetime() { library_start(); }
    ~Lifetime() { conversion_buffer(0); }
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;
};
const Lifetime lifetime;

}  // namespace

void library_start() {
    debugEnabled = environment_has("QVOX_DEBUG");
    memstatEnabled = environment_has("QVOX_MEMSTAT");
    qvox_debug("os encoding = SJIS");
    qvox_debug("machine byte order = LITTLE_ENDIAN");
}

void parser_created() {
    const std::lock_guard<std::mutex> guard(countLock);
    ++parserCount;
}

void parser_destroyed() {
    const std::lock_guard<std::mutex> guard(countLock);
    if (parserCount == 0) {
        qvox_report(REPORT_FATAL, QVOXException::INTERNAL_ERR, "parser count underflow");
    }
    if (--parserCount == 0) conversion_buffer(0);
}

}  // namespace qvox
