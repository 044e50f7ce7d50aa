# Headers of header-only libraries that the machine's packages put beside all others. A cross
# compiler must see these and nothing else of that folder.
function(korvixsdk_header_only_library target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "ENTRIES;DEFINITIONS")
  set(folder ${PROJECT_BINARY_DIR}/header-only/${target})
  file(MAKE_DIRECTORY ${folder})
  foreach(entry IN LISTS arg_ENTRIES)
    # Not in PATH, where there may be programs of these names, such as fmt.
    find_path(${target}_${entry}_folder ${entry} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH
              NO_SYSTEM_ENVIRONMENT_PATH REQUIRED)
    file(CREATE_LINK ${${target}_${entry}_folder}/${entry} ${folder}/${entry} SYMBOLIC)
  endforeach()
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE ${folder})
  target_compile_definitions(${target} INTERFACE ${arg_DEFINITIONS})
endfunction()
