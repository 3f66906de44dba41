# Installs the built library into a scratch prefix, then builds and runs a small program
# against it twice: through find_package(QuillanorCommon CONFIG) and through pkg-config (for a
# cross build, once through find_package, run by the emulator).
set(prefix ${QC_WORK_DIR}/prefix)
file(REMOVE_RECURSE ${QC_WORK_DIR})

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
    if(NOT rc EQUAL 0)
        message(FATAL_ERROR "Failed (${rc}): ${ARGN}\n${out}")
    endif()
    message(STATUS "${out}")
endfunction()

set(flags "")
if(QC_SANITIZE)
    set(flags "-fsanitize=${QC_SANITIZE}")
endif()

run(${CMAKE_COMMAND} --install ${QC_BUILD_DIR} --prefix ${prefix})

# A cross build (QC_TOOLCHAIN, QC_EMULATOR): the consumer is built with the same toolchain and
# runs through the emulator with the installed DLL beside it; pkg-config is a host matter.
if(QC_TOOLCHAIN)
    run(${CMAKE_COMMAND} -S ${QC_CONSUMER_DIR} -B ${QC_WORK_DIR}/cross-build -G Ninja
        -DCMAKE_TOOLCHAIN_FILE=${QC_TOOLCHAIN}
        -DQuillanorCommon_DIR=${prefix}/lib/cmake/QuillanorCommon)
    run(${CMAKE_COMMAND} --build ${QC_WORK_DIR}/cross-build)
    file(GLOB dlls ${prefix}/bin/*.dll)
    file(COPY ${dlls} DESTINATION ${QC_WORK_DIR}/cross-build)
    run(${QC_EMULATOR} ${QC_WORK_DIR}/cross-build/consumer.exe)
    return()
endif()

# 1. CMake package.
run(${CMAKE_COMMAND} -S ${QC_CONSUMER_DIR} -B ${QC_WORK_DIR}/cmake-build
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${QC_CXX} -DCMAKE_CXX_FLAGS=${flags})
run(${CMAKE_COMMAND} --build ${QC_WORK_DIR}/cmake-build)
run(${QC_WORK_DIR}/cmake-build/consumer)

# 2. pkg-config.
find_program(PKG_CONFIG pkg-config REQUIRED)
file(GLOB_RECURSE pc_files ${prefix}/*/quillanor-common.pc)
list(GET pc_files 0 pc_file)
get_filename_component(pc_dir ${pc_file} DIRECTORY)
set(ENV{PKG_CONFIG_PATH} ${pc_dir})
execute_process(COMMAND ${PKG_CONFIG} --cflags --libs quillanor-common
    OUTPUT_VARIABLE pc_flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(pc_flags UNIX_COMMAND "${pc_flags}")
execute_process(COMMAND ${PKG_CONFIG} --variable=libdir quillanor-common
    OUTPUT_VARIABLE libdir OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
run(${QC_CXX} ${flags} ${QC_CONSUMER_DIR}/main.cpp ${pc_flags} -Wl,-rpath,${libdir}
    -o ${QC_WORK_DIR}/consumer-pc)
run(${QC_WORK_DIR}/consumer-pc)
