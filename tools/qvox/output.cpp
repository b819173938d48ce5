#include "output.h"

#include <cerrno>

bool WriteError::readerIsGone() const { return systemCode == EPIPE; }

void Output::write(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stream) != text.size()) throw WriteError{errno};
}

void Output::flush() {
    if (std::fflush(stream) != 0) throw WriteError{errno};
}

void Output::close() {
    if (std::fclose(stream) != 0) throw WriteError{errno};
}
