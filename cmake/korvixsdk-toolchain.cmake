# What host and library must have in common, as their interface carries C++ types.

# korvixsdk_toolchain(RESULT): the compiler family, the C++ runtime with its C runtime, and the size
# of a pointer that this build has.
function(korvixsdk_toolchain result)
  # What the runtime's headers say of themselves is read from the compiled file: nothing can be run
  # where the target is another system.
  set(probe ${CMAKE_BINARY_DIR}/CMakeFiles/korvixsdk-toolchain)
  file(
    WRITE ${probe}.cpp
    [[
#include <string>
#if defined(_LIBCPP_VERSION)
#define RUNTIME "libc++"
#elif defined(__GLIBCXX__) && _GLIBCXX_USE_CXX11_ABI
#define RUNTIME "libstdc++"
#elif defined(__GLIBCXX__)
#define RUNTIME "libstdc++ with the strings of before C++11"
#else
#define RUNTIME "Microsoft's C++ runtime"
#endif
#if !defined(_WIN32)
#define C_RUNTIME ""
#elif defined(_UCRT) || defined(_MSC_VER)
#define C_RUNTIME " on UCRT"
#else
#define C_RUNTIME " on msvcrt"
#endif
extern const char korvixsdk_runtime[];
const char korvixsdk_runtime[] = "korvixsdk-runtime[" RUNTIME C_RUNTIME "]";
]])
  set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
  set(runtime "an unknown C++ runtime")
  try_compile(compiles ${probe} SOURCES ${probe}.cpp COPY_FILE ${probe}.lib)
  if(compiles)
    file(STRINGS ${probe}.lib found REGEX "korvixsdk-runtime\\[[^]]*\\]" LIMIT_COUNT 1)
    string(REGEX REPLACE ".*korvixsdk-runtime\\[([^]]*)\\].*" "\\1" runtime "${found}")
  endif()
  math(EXPR bits "${CMAKE_SIZEOF_VOID_P} * 8")
  set(compiler ${CMAKE_CXX_COMPILER_ID})
  if(compiler STREQUAL GNU)
    set(compiler GCC)
  endif()
  set(${result} "${compiler}, ${runtime}, ${bits} bits" PARENT_SCOPE)
endfunction()
