# Test of cmake/CheckPlatformIncludes.cmake: a tree with one offence of each kind must fail
# with each offence named, and the same tree without them must pass.
#   cmake -DQC_CHECKER=<CheckPlatformIncludes.cmake> -DQC_WORK_DIR=<dir> -P PlatformIncludesCheck.cmake
set(root ${QC_WORK_DIR}/tree)
file(REMOVE_RECURSE ${root})

file(WRITE ${root}/Engine/Common/Base/Good.cpp
    "#include \"Engine/Common/Base/Good.h\"\n#include <cstdio>\n#include \"Process.h\"\n")
file(WRITE ${root}/Engine/Common/Base/GoodPosix.cpp
    "#include <unistd.h>\n#include <sys/mman.h>\n#include \"Detail/SysCallsPosix.h\"\n")
file(WRITE ${root}/Engine/Common/Base/GoodWin32.cpp
    "#include <windows.h>\n  #  include <winsock2.h>\n#include <fcntl.h>\n#include \"Detail/SysCallsWin32.h\"\n")

function(run_checker expect_ok)
    execute_process(COMMAND ${CMAKE_COMMAND} -DQC_CHECK_ROOT=${root} -DQC_CHECK_DIRS=Engine
            -P ${QC_CHECKER}
        RESULT_VARIABLE rc ERROR_VARIABLE err OUTPUT_VARIABLE out)
    if(expect_ok AND NOT rc EQUAL 0)
        message(FATAL_ERROR "clean tree rejected:\n${err}")
    endif()
    if(NOT expect_ok AND rc EQUAL 0)
        message(FATAL_ERROR "tree with platform headers in the wrong files accepted")
    endif()
    set(checker_output "${err}" PARENT_SCOPE)
endfunction()

run_checker(ON)

file(WRITE ${root}/Engine/Common/Base/Bad.cpp "#include <pthread.h>\n#include <Windows.h>\n#include <fcntl.h>\n")
file(WRITE ${root}/Engine/Common/Base/BadPosix.cpp
    "#include <ws2tcpip.h>\n#include \"Engine/Common/Base/Detail/SysCallsWin32.h\"\n")
file(WRITE ${root}/Engine/Common/Base/BadWin32.cpp "# include <sys/socket.h>\n#include <unistd.h>\n")
file(WRITE ${root}/Engine/Common/Base/Detail/Bad.h "#include \"Engine/Common/Base/Detail/FutexPosix.h\"\n")
run_checker(OFF)
# CMake wraps long messages; compare without line breaks and indentation.
string(REGEX REPLACE "[ \n]+" " " flat "${checker_output}")
foreach(expected
        "Bad.cpp: <pthread.h> is a POSIX header in a portable file"
        "Bad.cpp: <Windows.h> is a Windows header in a portable file"
        "BadPosix.cpp: <ws2tcpip.h> is a Windows header in a Posix file"
        "BadPosix.cpp: <Engine/Common/Base/Detail/SysCallsWin32.h> is a Win32 backend header in a Posix file"
        "BadWin32.cpp: <sys/socket.h> is a POSIX header in a Win32 file"
        "BadWin32.cpp: <unistd.h> is a POSIX header in a Win32 file"
        "Bad.cpp: <fcntl.h> is a POSIX header in a portable file"
        "Detail/Bad.h: <Engine/Common/Base/Detail/FutexPosix.h> is a POSIX backend header in a portable file")
    string(FIND "${flat}" "${expected}" at)
    if(at LESS 0)
        message(FATAL_ERROR "offence not reported: ${expected}\nchecker said:\n${checker_output}")
    endif()
endforeach()
string(FIND "${flat}" "Good" at)
if(NOT at LESS 0)
    message(FATAL_ERROR "a good file was reported:\n${checker_output}")
endif()
message(STATUS "platform include check: all offences found, clean files accepted")
