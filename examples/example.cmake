# What the examples share. Each one's CMakeLists.txt includes it, and is a project of its own:
#
#   cmake -S examples/minimal -B build/minimal -DCMAKE_PREFIX_PATH=/where/korvixsdk/is/installed

find_package(korvixsdk 1.0 CONFIG REQUIRED)
include(${CMAKE_CURRENT_LIST_DIR}/header_only.cmake)

# korvixsdk_example(NAME SOURCE...): a program that uses the library as a host does.
function(korvixsdk_example name)
  add_executable(${name} ${ARGN})
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
