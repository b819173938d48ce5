# Cross builds for 32-bit x86; what was built runs on a 64-bit one, with the libraries of the cross
# compiler.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER i686-linux-gnu-g++)
set(libraries /usr/i686-linux-gnu/lib)
set(CMAKE_CROSSCOMPILING_EMULATOR ${libraries}/ld-linux.so.2 --library-path ${libraries})
