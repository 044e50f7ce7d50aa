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

# Headers of header-only libraries that the machine's packages put beside all others. A cross
# compiler must see these and nothing else of that folder.
function(korvixsdk_header_only_library target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "ENTRIES;DEFINITIONS")
  set(folder ${PROJECT_BINARY_DIR}/header-only/${target})
  file(MAKE_DIRECTORY ${folder})
  foreach(entry IN LISTS arg_ENTRIES)
    find_path(${target}_${entry}_folder ${entry} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH
              REQUIRED)
    file(CREATE_LINK ${${target}_${entry}_folder}/${entry} ${folder}/${entry} SYMBOLIC)
  endforeach()
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE ${folder})
  target_compile_definitions(${target} INTERFACE ${arg_DEFINITIONS})
endfunction()
