# What every target of ours is compiled with. Warnings are errors where Lum is the top-level project:
# a later compiler's new warning must not break somebody else's build.
function(lum_set_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(PROJECT_IS_TOP_LEVEL)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
