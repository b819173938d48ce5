// What libFuzzer calls of each fuzzer.
#include "support/input.h"
#include "support/memory_files.h"
#include "support/require.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    qvox_fuzz::silence_reports();
    qvox_fuzz::make_memory_files();
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    qvox_fuzz::run(qvox_fuzz::Input(data, size));
    return 0;
}
