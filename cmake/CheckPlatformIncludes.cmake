# Checks that no source file includes a header of the wrong platform:
#   portable files (no Posix/Win32 suffix): neither POSIX nor Windows system headers, and none
#                                            of the library's own *Posix.h / *Win32.h headers;
#   *Posix.cpp / *Posix.h:                   no Windows header, no *Win32.h;
#   *Win32.cpp / *Win32.h:                   no POSIX header, no *Posix.h.
# System headers are the ones included with <...>. Win32 files may use the few C runtime
# headers that carry POSIX names.
# Usage: cmake -DQC_CHECK_ROOT=<dir> [-DQC_CHECK_DIRS="Engine;tests"] [-DQC_STAMP=<file>]
#              -P CheckPlatformIncludes.cmake
# Fails (listing every offending line) when a rule is broken; touches QC_STAMP otherwise.
if(NOT QC_CHECK_ROOT)
    message(FATAL_ERROR "QC_CHECK_ROOT is not set")
endif()
if(NOT QC_CHECK_DIRS)
    set(QC_CHECK_DIRS Engine tests tools bench fuzz)
endif()

# Header names are compared in lower case (Windows headers are often spelt "Windows.h").
set(posix_headers "^(sys|netinet|arpa|net|linux|asm|bits)/|^(unistd|pthread|fcntl|spawn|dlfcn|poll|semaphore|sched|dirent|termios|iconv|langinfo|syslog|pwd|grp|mqueue|netdb|ifaddrs|strings|execinfo|ucontext|glob|fnmatch|libgen|aio|wordexp|utime|endian|err|features|regex|sysexits|nl_types|cpuid)\\.h$")
# Headers with these POSIX names that the Windows C runtime has too (<fcntl.h> for _O_BINARY...).
set(windows_crt_headers "^(fcntl|sys/types|sys/stat|sys/timeb|sys/utime)\\.h$")
set(windows_headers "^(windows|winsock|winsock2|ws2tcpip|ws2def|ws2ipdef|mswsock|iphlpapi|iptypes|ipifcons|netioapi|winbase|winnt|windef|winuser|wingdi|winerror|winternl|winreg|winver|wincon|winnls|winioctl|synchapi|processthreadsapi|handleapi|fileapi|errhandlingapi|memoryapi|sysinfoapi|libloaderapi|profileapi|timezoneapi|debugapi|dbghelp|dxgi[0-9_]*|d3d[0-9a-z_]*|dwmapi|shlobj|shellapi|shlwapi|objbase|combaseapi|oleauto|mmsystem|timeapi|tlhelp32|psapi|io|direct|process|conio|crtdbg|versionhelpers|ntstatus|winhttp|wincrypt|bcrypt|powrprof|setupapi|cfgmgr32|knownfolders|tchar|avrt)\\.h$")

include(${CMAKE_CURRENT_LIST_DIR}/PlatformCheckFiles.cmake)
qc_platform_check_files(files ${QC_CHECK_ROOT} ${QC_CHECK_DIRS})

set(problems "")
foreach(file IN LISTS files)
    if(file MATCHES "Posix\\.[a-z]+$")
        set(kind Posix)
    elseif(file MATCHES "Win32\\.[a-z]+$")
        set(kind Win32)
    else()
        set(kind portable)
    endif()
    file(STRINGS ${file} lines REGEX "^[ \t]*#[ \t]*include[ \t]*[<\"]")
    foreach(line IN LISTS lines)
        if(NOT line MATCHES "#[ \t]*include[ \t]*([<\"])([^>\"]+)[>\"]")
            continue()
        endif()
        set(system_header OFF)
        if(CMAKE_MATCH_1 STREQUAL "<")
            set(system_header ON)
        endif()
        set(header ${CMAKE_MATCH_2})
        string(TOLOWER "${header}" lower)
        set(why "")
        if(NOT kind STREQUAL "Posix")
            if(system_header AND lower MATCHES "${posix_headers}"
               AND NOT (kind STREQUAL "Win32" AND lower MATCHES "${windows_crt_headers}"))
                set(why "POSIX header")
            elseif(header MATCHES "Posix\\.h$")
                set(why "POSIX backend header")
            endif()
        endif()
        if(NOT kind STREQUAL "Win32")
            if(system_header AND lower MATCHES "${windows_headers}")
                set(why "Windows header")
            elseif(header MATCHES "Win32\\.h$")
                set(why "Win32 backend header")
            endif()
        endif()
        if(why)
            file(RELATIVE_PATH rel ${QC_CHECK_ROOT} ${file})
            string(APPEND problems "  ${rel}: <${header}> is a ${why} in a ${kind} file\n")
        endif()
    endforeach()
endforeach()

if(problems)
    message(FATAL_ERROR "Platform headers outside their backend files:\n${problems}"
        "Move platform code into a FooPosix.cpp / FooWin32.cpp beside the portable file.")
endif()
if(QC_STAMP)
    file(TOUCH ${QC_STAMP})
endif()
