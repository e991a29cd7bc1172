# What every target of ours is compiled with. The presets make warnings errors; others need not, for a
# later compiler's new warning must not break somebody else's build.
function(lum_set_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
endfunction()
