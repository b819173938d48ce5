#include "input/file_end.h"

#include "runtime/report.h"

namespace qvox {

void check_end_of_file(const ByteStream& file) {
    if (!file.failed()) return;
    qvox_report(REPORT_ERROR, QVOXException::FILE_OPEN_ERR, "file (%s) cannot read",
                file.name().c_str());
}

}  // namespace qvox
