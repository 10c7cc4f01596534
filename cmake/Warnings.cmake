# Warnings shared by the library, its tests and tools.
function(kvxml_set_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wno-unused-parameter)
endfunction()
