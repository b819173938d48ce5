#include "documents.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <stdlib.h>
#include <system_error>

namespace bench {
namespace {

constexpr std::size_t smallSize = 400;
/// Of what a large document has, so much is read in small ones.
constexpr std::size_t smallShare = 16;

std::filesystem::path newFile(const std::filesystem::path& directory) {
    static int number = 0;
    return directory / ("document-" + std::to_string(++number) + ".xml");
}

void writeFile(const std::string& fileName, const std::string& bytes) {
    std::ofstream file(fileName, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw std::runtime_error("cannot write " + fileName);
}

}  // namespace

Document::Document(const DocumentKind& kindOfIt, std::size_t size,
                   const std::filesystem::path& directory)
    : kind(kindOfIt), timesRead(1) {
    DocumentBuilder builder(kind.encoding);
    kind.generate(builder, kind.isSmall ? smallSize : size);
    counted = builder.contents();
    written = {newFile(directory).string(), builder.bytes(), kind.allReadTheFile};
    if (kind.isSmall) {
        const std::size_t times = size / smallShare / written.bytes.size();
        timesRead = static_cast<int>(std::max<std::size_t>(times, 1));
    }
    writeFile(written.fileName, written.bytes);
}

Document::~Document() {
    std::error_code ignored;
    std::filesystem::remove(written.fileName, ignored);
}

TemporaryDirectory::TemporaryDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "qvox-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("cannot make the directory " + pattern);
    }
    directory = pattern;
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(directory, ignored);
}

}  // namespace bench
