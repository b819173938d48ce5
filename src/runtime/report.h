// The one way in which the scanner, the decoders, the allocator and the writer report trouble, and
// the debug log.
#pragma once

#include <cstdio>

#include <qvox/exception.h>

#include "text/wide.h"

namespace qvox {

enum ReportLevel : int {
    REPORT_WARNING = 1,  // returns
    REPORT_ERROR = 2,    // throws QVOXException
    REPORT_FATAL = 3     // ends the process
};

#if defined(__MINGW_PRINTF_FORMAT)
#define QVOX_PRINTF_LIKE(text, first) __attribute__((format(__MINGW_PRINTF_FORMAT, text, first)))
#elif defined(__GNUC__)
#define QVOX_PRINTF_LIKE(text, first) __attribute__((format(printf, text, first)))
#else
#define QVOX_PRINTF_LIKE(text, first)
#endif

// Writes "QVOX ", the level and the formatted message as a line to the report output, tells the
// listener of this thread, and then does what the level says. The message is cut at the last whole
// Shift_JIS character that fits into 4096 bytes. A handler that throws leaves from here.
void qvox_report(ReportLevel level, int code, const char* format, ...) QVOX_PRINTF_LIKE(3, 4);

// What takeErrorPlace() gives, for the errors of a parse.
void note_error_place(int line, int column);

// Writes a line to standard output if debugEnabled; otherwise doesn't even format it.
void qvox_debug(const char* format, ...) QVOX_PRINTF_LIKE(1, 2);

// Whether the debug log is written. Written by library_start only.
extern bool debugEnabled;

// Hears of every report of a thread, ahead of what the report's level does: a running parse. One
// that throws ends the report there.
class ReportListener {
public:
    virtual void hear(ReportLevel level, QVOXException::Code code, const char* message) = 0;

protected:
    ~ReportListener() = default;
};

// Lets `listener`, or nobody if it is null, hear the reports of this thread for as long as the
// object lives; then the one before does again.
class ReportScope {
public:
    explicit ReportScope(ReportListener* listener);
    ReportScope(const ReportScope&) = delete;
    ReportScope& operator=(const ReportScope&) = delete;
    ~ReportScope();

private:
    ReportListener* outer;
};

}  // namespace qvox
