#include "runtime/report.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>
#include <utility>

#include <qvox/report.h>

namespace qvox {

bool debugEnabled = false;

namespace {

constexpr std::size_t MESSAGE_SIZE = 4096;

// A report belongs to the parse that runs on its own thread.
thread_local ReportListener* listenerOfThread = nullptr;

const char* level_prefix(ReportLevel level) {
    switch (level) {
        case REPORT_WARNING: return "warning : ";
        case REPORT_ERROR: return "error : ";
        default: return "fatal error : ";
    }
}

bool is_lead_byte(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return (value >= 0x81 && value <= 0x9F) || (value >= 0xE0 && value <= 0xFC);
}

// Takes off the first half of a double-byte character that the end of the buffer has split.
void drop_split_character(char* message) {
    char* p = message;
    while (*p != 0) {
        const std::size_t size = is_lead_byte(*p) ? 2 : 1;
        if (size == 2 && p[1] == 0) {
            *p = 0;
            return;
        }
        p += size;
    }
}

thread_local ErrorPlace errorPlace;  // what takeErrorPlace() gives

// Report lines come from all threads.
struct ReportOutput {
    std::mutex lock;
    std::FILE* stream = stdout;
};

ReportOutput& report_output() {
    static ReportOutput output;
    return output;
}

// One call of the stream a line, since others may write to it too.
void write_line(ReportLevel level, const char* message) {
    char line[MESSAGE_SIZE + 32];
    const int length =
        std::snprintf(line, sizeof line, "QVOX %s%s\n", level_prefix(level), message);
    ReportOutput& output = report_output();
    const std::lock_guard guard(output.lock);
    if (output.stream == nullptr) return;
    std::fwrite(line, 1, static_cast<std::size_t>(length), output.stream);
    if (level == REPORT_FATAL) std::fflush(output.stream);
}

}  // namespace

std::FILE* setReportOutput(std::FILE* stream) noexcept {
    ReportOutput& output = report_output();
    const std::lock_guard guard(output.lock);
    return std::exchange(output.stream, stream);
}

ErrorPlace takeErrorPlace() noexcept { return std::exchange(errorPlace, {}); }

void note_error_place(int line, int column) { errorPlace = {line, column}; }

void qvox_report(ReportLevel level, int code, const char* format, ...) {
    char message[MESSAGE_SIZE];
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(message, sizeof message, format, arguments);
    va_end(arguments);
    if (length < 0) message[0] = 0;
    if (length >= static_cast<int>(sizeof message)) drop_split_character(message);

    write_line(level, message);

    const auto reportedCode = static_cast<QVOXException::Code>(code);
    if (listenerOfThread != nullptr) listenerOfThread->hear(level, reportedCode, message);

    if (level == REPORT_ERROR) throw QVOXException(reportedCode, message);
    if (level == REPORT_FATAL) std::abort();
}

void qvox_debug(const char* format, ...) {
    if (!debugEnabled) return;
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    if (length < 0) return;
    std::string line(static_cast<std::size_t>(length) + 1, '\n');
    va_start(arguments, format);
    std::vsnprintf(line.data(), line.size(), format, arguments);
    va_end(arguments);
    line.back() = '\n';  // in one call, since other threads write lines too
    std::fwrite(line.data(), 1, line.size(), stdout);
}

ReportScope::ReportScope(ReportListener* listener)
    : outer(std::exchange(listenerOfThread, listener)) {}

ReportScope::~ReportScope() { listenerOfThread = outer; }

}  // namespace qvox
