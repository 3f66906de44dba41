# Build step that fails when a file includes a header of the wrong platform (see
# CheckPlatformIncludes.cmake). It runs before the library is compiled and again whenever a
# source file changes.
set(qc_include_check_dirs Engine tests tools bench fuzz)
set(qc_include_check_globs "")
foreach(dir IN LISTS qc_include_check_dirs)
    foreach(ext cpp cc h hpp inl)
        list(APPEND qc_include_check_globs ${PROJECT_SOURCE_DIR}/${dir}/*.${ext})
    endforeach()
endforeach()
file(GLOB_RECURSE qc_include_check_files CONFIGURE_DEPENDS ${qc_include_check_globs})

add_custom_command(
    OUTPUT ${PROJECT_BINARY_DIR}/platform-includes.stamp
    COMMAND ${CMAKE_COMMAND} -DQC_CHECK_ROOT=${PROJECT_SOURCE_DIR}
        "-DQC_CHECK_DIRS=${qc_include_check_dirs}"
        -DQC_STAMP=${PROJECT_BINARY_DIR}/platform-includes.stamp
        -P ${CMAKE_CURRENT_LIST_DIR}/CheckPlatformIncludes.cmake
    DEPENDS ${qc_include_check_files} ${CMAKE_CURRENT_LIST_DIR}/CheckPlatformIncludes.cmake
    COMMENT "Checking that platform headers stay in their backend files"
    VERBATIM)
add_custom_target(qc_platform_includes ALL DEPENDS ${PROJECT_BINARY_DIR}/platform-includes.stamp)
