# channel_enable_warnings(<target>): the warnings that our own targets compile without. Third-party code is left alone.

function(channel_enable_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  if(CHANNEL_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
