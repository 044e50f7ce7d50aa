# What the examples share. Each one's CMakeLists.txt includes it, in this project's own build and in
# a build of that example alone against an installed package:
#
#   cmake -S examples/minimal -B build/minimal -DCMAKE_PREFIX_PATH=/where/korvixsdk/is/installed

if(NOT TARGET korvixsdk::korvixsdk)
  find_package(korvixsdk 1.0 CONFIG REQUIRED)
endif()
include(${CMAKE_CURRENT_LIST_DIR}/header_only.cmake)

# korvixsdk_example(NAME SOURCE...): a program that uses the library as a host does.
function(korvixsdk_example name)
  add_executable(${name} ${ARGN})
  if(COMMAND korvixsdk_settings)
    # The library's own build, and its warnings.
    korvixsdk_settings(${name})
  endif()
  target_link_libraries(${name} PRIVATE korvixsdk::korvixsdk)
  if(MINGW)
    target_link_options(${name} PRIVATE -static)
    target_sources(${name} PRIVATE ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/utf8_code_page.rc)
  elseif(MSVC)
    target_sources(${name} PRIVATE ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/utf8_code_page.manifest)
  endif()
endfunction()

# korvixsdk_example_offer_check(TARGET): with the two files that look at an offer first.
function(korvixsdk_example_offer_check target)
  set(folder ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/offer_check)
  target_sources(${target} PRIVATE ${folder}/offer_check.cpp)
  target_include_directories(${target} PRIVATE ${folder})
endfunction()

# korvixsdk_example_headers(TARGET [ENTRIES ...] [DEFINITIONS ...]): a header-only library that
# several examples may ask for.
function(korvixsdk_example_headers target)
  if(NOT TARGET ${target})
    korvixsdk_header_only_library(${target} ${ARGN})
  endif()
endfunction()
