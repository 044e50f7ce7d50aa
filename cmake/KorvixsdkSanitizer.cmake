# A sanitizer in everything that is built, the tests and GoogleTest included. For Clang; the presets
# linux-asan and linux-tsan set it.
set(KORVIXSDK_SANITIZER "" CACHE STRING "Sanitizer: address (with undefined), thread, or none")
set_property(CACHE KORVIXSDK_SANITIZER PROPERTY STRINGS "" address thread)

set(korvixsdk_sanitizer_flags)
if(KORVIXSDK_SANITIZER STREQUAL "address")
  set(korvixsdk_sanitizer_flags -fsanitize=address,undefined)
elseif(KORVIXSDK_SANITIZER STREQUAL "thread")
  set(korvixsdk_sanitizer_flags -fsanitize=thread)
elseif(KORVIXSDK_SANITIZER)
  message(FATAL_ERROR "KORVIXSDK_SANITIZER is neither address nor thread: ${KORVIXSDK_SANITIZER}")
endif()
if(KORVIXSDK_SANITIZER)
  # The C++ library looks at its own bounds too.
  list(APPEND korvixsdk_sanitizer_flags -fno-sanitize-recover=all -fno-omit-frame-pointer
       -D_GLIBCXX_ASSERTIONS)
  add_compile_options(${korvixsdk_sanitizer_flags})
  add_link_options(${korvixsdk_sanitizer_flags})
endif()
