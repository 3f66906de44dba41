# Running the Windows programs of a cross build under Wine. The emulator found by the
# toolchain is wrapped by <build>/wine-run.sh, which gives every run the same private Wine
# prefix inside the build folder (created on first use) and silences Wine's own diagnostics;
# it also starts and stops one persistent wineserver for a whole test run.
if(NOT CMAKE_CROSSCOMPILING OR NOT WIN32 OR NOT CMAKE_CROSSCOMPILING_EMULATOR)
    return()
endif()
if(CMAKE_CROSSCOMPILING_EMULATOR MATCHES "wine-run\\.sh$")
    return()
endif()

set(QC_WINE ${CMAKE_CROSSCOMPILING_EMULATOR})
set(QC_WINEPREFIX ${PROJECT_BINARY_DIR}/wineprefix)
configure_file(${CMAKE_CURRENT_LIST_DIR}/wine-run.sh.in ${PROJECT_BINARY_DIR}/wine-run.sh
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE @ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR ${PROJECT_BINARY_DIR}/wine-run.sh)
message(STATUS "Windows programs run under ${QC_WINE} (prefix ${QC_WINEPREFIX})")
