# Settings that the project's own targets share. Nothing here touches a directory or global
# property, so that a host may add the source tree to its own build.

if(MSVC)
  set(korvixsdk_warnings /W4)
  set(korvixsdk_warning_as_error /WX)
else()
  set(korvixsdk_warnings -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wold-style-cast
                         -Wnon-virtual-dtor)
  set(korvixsdk_warning_as_error -Werror)
endif()
if(KORVIXSDK_WARNINGS_AS_ERRORS)
  list(APPEND korvixsdk_warnings ${korvixsdk_warning_as_error})
endif()

function(korvixsdk_settings target)
  target_compile_features(${target} PRIVATE cxx_std_17)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE ${korvixsdk_warnings} $<$<BOOL:${MSVC}>:/utf-8>)
endfunction()

# korvixsdk_version_resource(TARGET DESCRIPTION): what Windows shows of a file that is shipped. Its
# name is the target's OUTPUT_NAME, where that is set before, or the target's own.
function(korvixsdk_version_resource target description)
  get_target_property(name ${target} OUTPUT_NAME)
  if(NOT name)
    set(name ${target})
  endif()
  set(type VFT_APP)
  set(suffix .exe)
  get_target_property(target_type ${target} TYPE)
  if(target_type STREQUAL SHARED_LIBRARY)
    set(type VFT_DLL)
    set(suffix .dll)
  endif()
  set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}-version.rc)
  configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/version.rc.in ${resource} @ONLY)
  target_sources(${target} PRIVATE ${resource})
endfunction()

include(${CMAKE_CURRENT_LIST_DIR}/../examples/header_only.cmake)
