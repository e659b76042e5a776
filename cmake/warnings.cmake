# Our warnings, on our own targets only. Presets and CI turn them into errors with
# CMAKE_COMPILE_WARNING_AS_ERROR.
function(ttr_enable_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wold-style-cast -Wcast-qual -Wundef)
endfunction()
