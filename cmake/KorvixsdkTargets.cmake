# Settings that the project's own targets share. Nothing here touches a directory or global
# property, so that a host may add the source tree to its own build.

function(korvixsdk_settings target)
  target_compile_features(${target} PRIVATE cxx_std_17)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /utf-8
                                             $<$<BOOL:${KORVIXSDK_WARNINGS_AS_ERRORS}>:/WX>)
  else()
    target_compile_options(
      ${target}
      PRIVATE -Wall
              -Wextra
              -Wpedantic
              -Wconversion
              -Wshadow
              -Wold-style-cast
              -Wnon-virtual-dtor
              $<$<BOOL:${KORVIXSDK_WARNINGS_AS_ERRORS}>:-Werror>)
  endif()
endfunction()

include(${CMAKE_CURRENT_LIST_DIR}/../examples/header_only.cmake)
