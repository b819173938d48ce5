#include "writer/output_target.h"

#include <algorithm>

#include "runtime/report.h"
#include "writer/encoders.h"

namespace qvox {

namespace {

void report_write_failure() {
    qvox_report(REPORT_ERROR, QVOXException::FILE_WRITE_ERR, "file write fail");
}

}  // namespace

void FileTarget::take(const Unit* units, std::size_t count) {
    if (encoding == UTF16) {
        write(units, count * sizeof *units);
        return;
    }
    if (bytes.size() < 2 * count) bytes.resize(2 * count);
    const char* const end = encode_units(encoding, units, count, bytes.data());
    write(bytes.data(), static_cast<std::size_t>(end - bytes.data()));
}

void FileTarget::finish() {
    if (!file->finish()) report_write_failure();
}

void FileTarget::write(const void* from, std::size_t count) {
    if (!file->write(from, count)) report_write_failure();
}

void MemoryTarget::take(const Unit* units, std::size_t count) {
    if (text != nullptr && produced < capacity) {
        std::copy_n(units, std::min(count, capacity - produced), text + produced);
    }
    produced += count;
}

std::size_t MemoryTarget::finish() {
    if (text != nullptr && produced < capacity) text[produced] = 0;
    return produced + 1;
}

}  // namespace qvox
