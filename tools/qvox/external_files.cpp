#include "external_files.h"

#include <stdexcept>

void refuse_external_files(qvox::Parser& parser) {
    constexpr const char* EXTERNAL_FILES = "urn:qvox:features:external-files";
    try {
        parser.setFeature(EXTERNAL_FILES, false);
    } catch (const qvox::QVOXException&) {
        throw std::runtime_error("this library can't refuse external files");
    }
}
