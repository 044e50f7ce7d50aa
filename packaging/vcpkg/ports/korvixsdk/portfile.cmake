# An overlay port for a checkout of this project: the sources are those around it.
#
#   vcpkg install korvixsdk --overlay-ports=packaging/vcpkg/ports
get_filename_component(sources "${CMAKE_CURRENT_LIST_DIR}/../../../.." ABSOLUTE)

vcpkg_check_linkage(ONLY_DYNAMIC_LIBRARY)
vcpkg_cmake_configure(
    SOURCE_PATH "${sources}"
    OPTIONS
        -DKORVIXSDK_BUILD_TESTS=OFF
        -DKORVIXSDK_BUILD_TOOLS=OFF
        -DKORVIXSDK_BUILD_EXAMPLES=OFF
)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(CONFIG_PATH lib/cmake/korvixsdk)
vcpkg_fixup_pkgconfig()
vcpkg_copy_pdbs()

# One set of headers and documents for both configurations.
file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
vcpkg_install_copyright(FILE_LIST "${sources}/LICENSE")
