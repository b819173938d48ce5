# qvox_warnings: link it PRIVATE to a target of qvox, and the target is compiled with our warnings.

add_library(qvox_warnings INTERFACE)

set(common_warnings
    -Wall
    -Wextra
    -Wpedantic
    -Wcast-align
    -Wcast-qual
    -Wconversion
    -Wdouble-promotion
    -Wextra-semi
    -Wformat=2
    -Wimplicit-fallthrough
    -Wold-style-cast
    -Woverloaded-virtual
    -Wredundant-decls
    -Wshadow
    -Wsign-conversion
    -Wundef
    -Wunused
    -Wzero-as-null-pointer-constant)
set(gcc_warnings -Wduplicated-branches -Wduplicated-cond -Wlogical-op -Wmissing-declarations)
# What narrows a size where that has 64 bits does nothing where it has 32.
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  list(APPEND gcc_warnings -Wuseless-cast)
endif()
set(clang_warnings -Wmissing-prototypes -Wmissing-variable-declarations
                   -Wunreachable-code-aggressive)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(qvox_warnings INTERFACE ${common_warnings} ${gcc_warnings})
elseif(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  target_compile_options(qvox_warnings INTERFACE ${common_warnings} ${clang_warnings})
elseif(MSVC)
  # The sources are UTF-8, and fopen() is no cause for a warning.
  target_compile_options(qvox_warnings INTERFACE /utf-8 /W4)
  target_compile_definitions(qvox_warnings INTERFACE _CRT_SECURE_NO_WARNINGS NOMINMAX)
endif()

if(QVOX_WERROR)
  target_compile_options(qvox_warnings INTERFACE $<IF:$<BOOL:${MSVC}>,/WX,-Werror>)
endif()
