# The documentation site: `cmake --build build --target site` writes it; its first page is build/site/html/index.html.

if(CMAKE_CROSSCOMPILING)
  return()
endif()
find_package(Doxygen 1.9.4 QUIET)
if(NOT DOXYGEN_FOUND)
  message(STATUS "Doxygen not found: the documentation site is left out")
  return()
endif()

set(site_dir "${PROJECT_BINARY_DIR}/site")

# channel_site_tabs(<variable> <pages>...): the sidebar's entries for pages in Markdown, under their own titles.
function(channel_site_tabs variable)
  set(tabs "")
  foreach(page IN LISTS ARGN)
    file(STRINGS "${page}" title REGEX "^# " LIMIT_COUNT 1)
    string(SUBSTRING "${title}" 2 -1 title)
    cmake_path(RELATIVE_PATH page BASE_DIRECTORY "${PROJECT_SOURCE_DIR}")
    string(REGEX REPLACE "\\.md$" "" label "${page}")
    string(REGEX REPLACE "[/-]" "_" label "${label}")
    string(APPEND tabs "      <tab type=\"user\" visible=\"yes\" url=\"@ref md_${label}\" title=\"${title}\"/>\n")
  endforeach()
  set(${variable} "${tabs}" PARENT_SCOPE)
endfunction()

# Guides in the order in which a reader wants them, pages by name.
set(site_guides host files limits logging porting)
list(TRANSFORM site_guides REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/docs/guides/\\1.md")
file(GLOB site_pages CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/docs/*.md")
channel_site_tabs(guide_tabs ${site_guides})
set(listed_pages ${site_pages})
list(REMOVE_ITEM listed_pages "${PROJECT_SOURCE_DIR}/docs/README.md")
channel_site_tabs(page_tabs ${listed_pages})

configure_file("${PROJECT_SOURCE_DIR}/docs/site/layout.xml.in" "${site_dir}/layout.xml" @ONLY)
configure_file("${PROJECT_SOURCE_DIR}/docs/site/Doxyfile.in" "${site_dir}/Doxyfile" @ONLY)

add_custom_target(site
  COMMAND "${DOXYGEN_EXECUTABLE}" "${site_dir}/Doxyfile"
  COMMENT "Writing the documentation site to ${site_dir}"
  VERBATIM)
