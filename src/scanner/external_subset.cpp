#include "scanner/external_subset.h"

#include <utility>

#include "input/input_stack.h"
#include "runtime/report.h"
#include "text/temporaries.h"

namespace qvox {

void load_external_subset(const Unit* /*publicId*/, const Unit* systemId) {
    if (systemId == nullptr || reading_memory()) return;
    const OsTemp path(systemId);
    std::unique_ptr<ByteStream> file = open_system_id(path.get());
    if (file == nullptr) {
        qvox_report(REPORT_WARNING, QVOXException::FILE_OPEN_ERR, "system id (%s) can't open",
                    path.get());
        return;
    }
    push_external_subset(std::move(file));
}

}  // namespace qvox
