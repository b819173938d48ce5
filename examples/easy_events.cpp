// Prints the names of a document's elements, each indented by its depth.
#include <cstdio>
#include <string>

#include <qvox/easy.h>

int main(int, char** argv) {
    int depth = 0;
    qvox::easy::reader reader;
    reader.on_start = [&](const qvox::easy::start_tag& tag) {
        std::printf("%*s%s\n", 2 * depth++, "", tag.name().c_str());
    };
    reader.on_end = [&](const std::string&) { --depth; };
    try {
        reader.read(argv[1]);
    } catch (const qvox::easy::error& error) {
        std::fprintf(stderr, "%d:%d: %s\n", error.line(), error.column(), error.what());
        return 1;
    }
}
