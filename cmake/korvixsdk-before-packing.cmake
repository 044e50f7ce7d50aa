# Run by CPack between installing and packing: the debug symbols go into a file of their own beside
# the library, programs keep none, the code of others inside is described, and nothing keeps the time
# at which it was built, so that the same sources give the same archive.
set(folder ${CPACK_TEMPORARY_INSTALL_DIRECTORY})
set(library ${folder}/${CPACK_KORVIXSDK_LIBRARY})

function(run)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

if(CPACK_KORVIXSDK_OBJCOPY)
  run(${CPACK_KORVIXSDK_OBJCOPY} --only-keep-debug ${library} ${library}.debug)
  run(${CPACK_KORVIXSDK_STRIP} --strip-unneeded ${library})
  run(${CPACK_KORVIXSDK_OBJCOPY} --add-gnu-debuglink=${library}.debug ${library})
  file(GLOB programs ${folder}/${CPACK_KORVIXSDK_PROGRAMS}/korvix-*)
  foreach(program IN LISTS programs)
    run(${CPACK_KORVIXSDK_STRIP} ${program})
  endforeach()
endif()

# Documents lie on top, where they are looked for, and where what they point to lies as in the sources.
file(GLOB documents ${folder}/${CPACK_KORVIXSDK_DOCUMENTS}/*)
file(COPY ${documents} DESTINATION ${folder})
file(REMOVE_RECURSE ${folder}/share)
# The notices have it.
file(REMOVE ${folder}/curl-COPYING)

run(${CPACK_KORVIXSDK_SOURCES}/packaging/archive/describe
    --folder ${folder}
    --shipped ${CPACK_KORVIXSDK_BUILD}/shipped.txt
    --build ${CPACK_KORVIXSDK_BUILD}
    --sources ${CPACK_KORVIXSDK_SOURCES}
    --archive ${CPACK_PACKAGE_FILE_NAME}
    --version ${CPACK_KORVIXSDK_VERSION}
    --company ${CPACK_KORVIXSDK_COMPANY}
    --ninja ${CPACK_KORVIXSDK_NINJA})

set(time 0)
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  set(time $ENV{SOURCE_DATE_EPOCH})
endif()
file(GLOB_RECURSE entries LIST_DIRECTORIES TRUE ${folder}/*)
run(touch --no-dereference --date=@${time} ${entries} ${folder})
