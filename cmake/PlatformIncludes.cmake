# Build step that fails when a file includes a header of the wrong platform (see
# CheckPlatformIncludes.cmake). It runs before the library is compiled and again whenever a
# source file changes.
set(qc_include_check_dirs Engine tests tools bench fuzz)
include(${CMAKE_CURRENT_LIST_DIR}/PlatformCheckFiles.cmake)
qc_platform_check_files(qc_include_check_files ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS
    ${qc_include_check_dirs})

add_custom_command(
    OUTPUT ${PROJECT_BINARY_DIR}/platform-includes.stamp
    COMMAND ${CMAKE_COMMAND} -DQC_CHECK_ROOT=${PROJECT_SOURCE_DIR}
        "-DQC_CHECK_DIRS=${qc_include_check_dirs}"
        -DQC_STAMP=${PROJECT_BINARY_DIR}/platform-includes.stamp
        -P ${CMAKE_CURRENT_LIST_DIR}/CheckPlatformIncludes.cmake
    DEPENDS ${qc_include_check_files} ${CMAKE_CURRENT_LIST_DIR}/CheckPlatformIncludes.cmake
        ${CMAKE_CURRENT_LIST_DIR}/PlatformCheckFiles.cmake
    COMMENT "Checking that platform headers stay in their backend files"
    VERBATIM)
add_custom_target(qc_platform_includes ALL DEPENDS ${PROJECT_BINARY_DIR}/platform-includes.stamp)
