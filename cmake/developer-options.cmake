# Options for those who work on qvox itself. The presets set them; users can leave them alone.

option(QVOX_BUILD_TESTS "Build the tests (needs GoogleTest)" OFF)
option(QVOX_BUILD_BENCH "Build the benchmarks" OFF)
option(QVOX_BUILD_FUZZ "Build the fuzzers (needs clang)" OFF)
option(QVOX_PACKAGE "Generate the target package: Debian packages" OFF)
option(QVOX_REQUIRE_ALL "Fail, rather than leave a part out, where a package is missing" OFF)
option(QVOX_WERROR "Treat warnings as errors" OFF)
set(QVOX_SANITIZE "" CACHE STRING "Sanitizers to build with, as in \"address,undefined\"")
set(QVOX_GOOGLETEST "" CACHE PATH "Sources of GoogleTest, to build it with what is tested")

if(QVOX_SANITIZE)
  add_compile_options(-fsanitize=${QVOX_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(-fsanitize=${QVOX_SANITIZE})
endif()

# Under another library or system than this one's, a GoogleTest that is installed doesn't serve.
if(QVOX_GOOGLETEST)
  include(FetchContent)
  FetchContent_Declare(GTest SOURCE_DIR ${QVOX_GOOGLETEST} OVERRIDE_FIND_PACKAGE)
  function(qvox_build_googletest)
    set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)
    set(BUILD_SHARED_LIBS OFF)
    set(INSTALL_GTEST OFF)
    FetchContent_MakeAvailable(GTest)
  endfunction()
  qvox_build_googletest()
endif()
