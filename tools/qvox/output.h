// What the program itself says on standard output.
#pragma once

#include <cstdio>
#include <string_view>

#include "look.h"

// Standard output doesn't take what is written. Not of the library's family, so that it passes
// through a parse from a handler to main as it is.
struct WriteError {
    int systemCode;  // errno

    // Whoever read the output has left, which calls for no message.
    bool readerIsGone() const;
};

class Output {
public:
    explicit Output(std::FILE* openStream) : stream(openStream) {}

    // All three throw WriteError. Nothing may be written behind close().
    void write(std::string_view text);
    void flush();
    void close();

    // How what is written is shown.
    Look look() const { return look_of(stream); }

private:
    std::FILE* stream;
};

// Standard input, for bytes as they are.
std::FILE* standard_input();

// Standard output, for UTF-8 with line feeds as they are, like standard error from then on. Throws
// WriteError where it is closed.
std::FILE* standard_output();
