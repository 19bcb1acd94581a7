# What an installation holds, in three components, and how CPack packs them.
#
# program      tq4x, the host's library and the plug-in, laid out as in the build tree
# development  the core for other programs: headers, static library, find_package(tq4x)
# addon        the folder of an add-on for the package (on Windows)
include(CMakePackageConfigHelpers)

set(documents "${PROJECT_SOURCE_DIR}/README.md" "${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${PROJECT_SOURCE_DIR}/LICENSE")

if(WIN32)
    # The system looks for a program's libraries beside the program, and for a plug-in's there too.
    install(TARGETS tq4x xsi RUNTIME DESTINATION bin COMPONENT program)
    install(TARGETS TQ4X_ForPennonExport LIBRARY DESTINATION lib/tq4x COMPONENT program)
    install(TARGETS no_tool_starter RUNTIME DESTINATION lib/tq4x COMPONENT program)
    install(FILES ${documents} DESTINATION . COMPONENT program)

    set(addon "Application/Plugins")
    install(TARGETS TQ4X_ForPennonExport LIBRARY DESTINATION ${addon} COMPONENT addon)
    install(TARGETS xsi RUNTIME DESTINATION ${addon} COMPONENT addon)
    install(FILES "${PROJECT_SOURCE_DIR}/packaging/addon/ReadMe.txt" DESTINATION . COMPONENT addon)
    install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" DESTINATION . RENAME License.txt COMPONENT addon)
    install(SCRIPT "${PROJECT_SOURCE_DIR}/cmake/WriteChecksums.cmake" COMPONENT addon) # of all that stands above
else()
    install(TARGETS tq4x RUNTIME DESTINATION bin COMPONENT program)
    install(TARGETS xsi TQ4X_ForPennonExport LIBRARY DESTINATION lib/tq4x COMPONENT program)
    install(FILES ${documents} DESTINATION share/doc/tq4x COMPONENT program)
    # Where Debian looks for a package's licence.
    install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" DESTINATION share/doc/tq4x RENAME copyright COMPONENT program)
    install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" DESTINATION share/doc/libtq4x-core-dev RENAME copyright
        COMPONENT development)
endif()

install(TARGETS tq4x_core EXPORT tq4xTargets ARCHIVE DESTINATION lib COMPONENT development)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/core/" DESTINATION include/tq4x COMPONENT development
    FILES_MATCHING PATTERN "*.h")
install(EXPORT tq4xTargets NAMESPACE tq4x:: DESTINATION lib/cmake/tq4x COMPONENT development)
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/tq4xConfig.cmake.in"
    "${CMAKE_BINARY_DIR}/tq4xConfig.cmake" INSTALL_DESTINATION lib/cmake/tq4x)
# Before 1.0 any new minor version may change what the headers say.
write_basic_package_version_file("${CMAKE_BINARY_DIR}/tq4xConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${CMAKE_BINARY_DIR}/tq4xConfig.cmake" "${CMAKE_BINARY_DIR}/tq4xConfigVersion.cmake"
    DESTINATION lib/cmake/tq4x COMPONENT development)

set(CPACK_PACKAGE_VENDOR "the tq4x authors")
set(CPACK_PACKAGE_CONTACT "the tq4x authors")
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_STRIP_FILES ON)
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_ARCHIVE_PROGRAM_FILE_NAME "tq4x-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}")
set(CPACK_ARCHIVE_DEVELOPMENT_FILE_NAME "tq4x-core-dev-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}")
set(CPACK_ARCHIVE_ADDON_FILE_NAME "TQ4X_ForPennonExport-${PROJECT_VERSION}-addon")
if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_COMPONENTS_ALL program addon)
else()
    set(CPACK_GENERATOR TGZ DEB)
    set(CPACK_COMPONENTS_ALL program development)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "${PROJECT_DESCRIPTION}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_BINARY_DIR}/lib/tq4x")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME tq4x)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtq4x-core-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "Records, passes and writers of tq4x, for other programs")
include(CPack)
