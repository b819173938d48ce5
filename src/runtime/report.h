// The one way in which the scanner, the decoders, the allocator and the writer report trouble, and
// the debug log.
#pragma once

#include <qvox/exception.h>

#include "text/wide.h"

namespace qvox {

enum ReportLevel : int {
    REPORT_WARNING = 1,  // returns
    REPORT_ERROR = 2,    // throws QVOXException
    REPORT_FATAL = 3     // ends the process
};

#if defined(__GNUC__)
#define QVOX_PRINTF_LIKE(text, first) __attribute__((format(printf, text, first)))
#else
#define QVOX_PRINTF_LIKE(text, first)
#endif

// Writes "QVOX ", the level and the formatted message as a line to standard output, tells the error
// handler of the running parse, and then does what the level says. The message is cut at the last
// whole Shift_JIS character that fits into 4096 bytes. A handler that throws leaves from here.
void qvox_report(int level, int code, const char* format, ...) QVOX_PRINTF_LIKE(3, 4);

// Writes a line to standard output if debugEnabled; otherwise doesn't even format it.
void qvox_debug(const char* format, ...) QVOX_PRINTF_LIKE(1, 2);

// Whether the debug log is written. Written by library_start only.
extern bool debugEnabled;

// Tells the error handler of the running parse, if there is one. Installed by the parsers, which
// know who that is; null until then.
using ReportHook = void (*)(int level, QVOXException::Code code, const char* message);
extern ReportHook reportHook;

}  // namespace qvox
