# The files the platform-include check reads: every C++ source and header below the folders
# `ARGN` of `root`. With CONFIGURE_DEPENDS as the first folder argument the glob is re-run
# by the build (project mode only).
function(qc_platform_check_files out root)
    set(dirs ${ARGN})
    set(flags "")
    if(dirs AND "${ARGV2}" STREQUAL "CONFIGURE_DEPENDS")
        list(REMOVE_AT dirs 0)
        set(flags CONFIGURE_DEPENDS)
    endif()
    set(globs "")
    foreach(dir IN LISTS dirs)
        foreach(ext cpp cc h hpp inl)
            list(APPEND globs ${root}/${dir}/*.${ext})
        endforeach()
    endforeach()
    file(GLOB_RECURSE files ${flags} ${globs})
    set(${out} ${files} PARENT_SCOPE)
endfunction()
