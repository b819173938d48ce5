#include "look.h"

#include <cstdlib>
#include <cstring>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

#ifdef _WIN32
bool is_terminal(std::FILE* stream) { return _isatty(_fileno(stream)) != 0; }
#else
bool is_terminal(std::FILE* stream) { return isatty(fileno(stream)) != 0; }
#endif

bool is_set(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

}  // namespace

Look look_of(std::FILE* stream) {
    const bool isTerminal = is_terminal(stream);
    const char* const terminal = std::getenv("TERM");
    const bool isDumb = terminal == nullptr || std::strcmp(terminal, "dumb") == 0;
    return {isTerminal, isTerminal && !isDumb && !is_set("NO_COLOR")};
}
