/// \file
/// Where the library's report lines go, and where in a document errors are.
#ifndef QVOX_REPORT_H
#define QVOX_REPORT_H

#include <cstdio>

#include <qvox/export.h>

namespace qvox {

/// Sends the lines that every warning and error writes ("QVOX error : ...", Shift_JIS) to `stream`
/// from now on, for the whole process: standard output at first, null for none. Returns the stream
/// so far. Handlers and exceptions are not affected, nor is what goes to standard output on request
/// (the debug log, statistics, a tree written without a file name).
///
/// May be called at any time, beside parses in other threads, and from a handler. A line comes
/// whole, and never inside another one. When the call has returned, nothing more goes to the
/// earlier stream, which may then be closed; the new one must stay open until the next call.
QVOX_API std::FILE* setReportOutput(std::FILE* stream) noexcept;

/// Where in the document a parse found its error, as an ErrorHandler hears it: counted from 1, the
/// column in display cells. 0 and 0 for no place.
struct ErrorPlace {
    /// Of the file in hand, which may be an external entity.
    int line = 0;
    /// Where the last piece of markup or text began; a wide character takes two cells.
    int column = 0;
};

/// The place of the last error that a parse reported on this thread since the last call, also of a
/// DOMParser, which has no handlers. Call it once ahead of a parse, and again for the exception
/// that came out of it.
QVOX_API ErrorPlace takeErrorPlace() noexcept;

}  // namespace qvox

#endif
