include(CMakePackageConfigHelpers)

install(TARGETS QuillanorCommon EXPORT QuillanorCommonTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

set(qc_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/QuillanorCommon)
install(EXPORT QuillanorCommonTargets NAMESPACE Quillanor:: DESTINATION ${qc_cmake_dir})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/QuillanorCommonConfig.cmake.in
    ${PROJECT_BINARY_DIR}/QuillanorCommonConfig.cmake INSTALL_DESTINATION ${qc_cmake_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QuillanorCommonConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/QuillanorCommonConfig.cmake
    ${PROJECT_BINARY_DIR}/QuillanorCommonConfigVersion.cmake DESTINATION ${qc_cmake_dir})

if(BUILD_SHARED_LIBS)
    set(QC_PC_CFLAGS "")
else()
    set(QC_PC_CFLAGS "-DQC_STATIC")
endif()
# The .pc file finds its prefix from its own location, so an installed tree can be moved.
file(RELATIVE_PATH QC_PC_PREFIX_REL ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig
    ${CMAKE_INSTALL_PREFIX})
configure_file(${PROJECT_SOURCE_DIR}/cmake/quillanor-common.pc.in
    ${PROJECT_BINARY_DIR}/quillanor-common.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/quillanor-common.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
