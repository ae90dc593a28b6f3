# channel_export_only(<target> <list>): lets a shared library export exactly the symbols of a list, one name a line,
# lines that begin with # being comments. The linker's version script is made from it.

function(channel_export_only target list)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${list}")
  file(STRINGS "${list}" symbols REGEX "^[A-Za-z_]")
  list(TRANSFORM symbols STRIP)
  list(JOIN symbols ";\n    " symbols)

  set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}.map")
  file(CONFIGURE OUTPUT "${script}" CONTENT "{\n  global:\n    @symbols@;\n  local:\n    *;\n};\n" @ONLY)
  target_link_options(${target} PRIVATE "-Wl,--version-script=${script}" -Wl,-Bsymbolic-functions)
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${script}")
endfunction()
