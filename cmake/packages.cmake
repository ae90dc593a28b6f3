# Debian packages, made by `cpack` in a build that is configured for them (preset `package`, see scripts/package): one for
# each install component that there is. What they hold beside the installed files is added by packages/stage.cmake.

if(NOT PROJECT_IS_TOP_LEVEL)
  return()
endif()

set(package_files "${PROJECT_SOURCE_DIR}/cmake/packages")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME channel)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "The channel list authors <channel@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # it would stand above the description of every component
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_SOURCE_DIR}/build/packages")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS "${package_files}/stage.cmake")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(debian_version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

# The library. The two libraries need each other, so that dpkg-shlibdeps has to find them where they were built. The
# interface grows and never shrinks under one SONAME: who links it today needs this version or a later one.
set(CPACK_COMPONENT_LIBCHANNEL1_DESCRIPTION "channel-list database of a digital television receiver
Keeps every known broadcast service in memory, offers numbered views of them
(all, TV, radio, user, favourites), answers zapping requests, and loads and
saves the list as one file.
.
This package holds the shared libraries.")
set(CPACK_DEBIAN_LIBCHANNEL1_PACKAGE_NAME libchannel1)
set(CPACK_DEBIAN_LIBCHANNEL1_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBCHANNEL1_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# A trigger calls ldconfig. CPack would write scripts that call it as well; it leaves out those that are named here, and
# passes over those that do not exist.
set(CPACK_DEBIAN_LIBCHANNEL1_PACKAGE_CONTROL_EXTRA "${package_files}/triggers;none/postinst;none/postrm")

set(CPACK_COMPONENT_LIBCHANNEL-DEV_DESCRIPTION "channel-list database of a digital television receiver - development
Keeps every known broadcast service in memory, offers numbered views of them
(all, TV, radio, user, favourites), answers zapping requests, and loads and
saves the list as one file.
.
This package holds the headers, the static libraries, and what pkg-config and
CMake need to find them.")
set(CPACK_DEBIAN_LIBCHANNEL-DEV_PACKAGE_NAME libchannel-dev)
set(CPACK_DEBIAN_LIBCHANNEL-DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_LIBCHANNEL-DEV_PACKAGE_DEPENDS "libchannel1 (= ${debian_version})")

# The tool links the static library, since it uses what the shared one does not export: it needs no libchannel1.
set(CPACK_COMPONENT_CHLIST_DESCRIPTION "command-line tool for channel lists of a digital television receiver
Shows, compares, checks, mends, edits and merges channel files, in a terminal
and in the browser, and takes edits back. Converts those of earlier versions,
makes them of transport streams, and exchanges them with VDR, DVBv5, Enigma2,
CSV, M3U and JSON.")
set(CPACK_DEBIAN_CHLIST_PACKAGE_NAME chlist)
set(CPACK_DEBIAN_CHLIST_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_CHLIST_PACKAGE_SHLIBDEPS ON)

# The Python module, where there is a component `python`. Python keeps compiled code beside it: the scripts make that and
# take it away again.
set(CPACK_COMPONENT_PYTHON_DESCRIPTION "channel lists of a digital television receiver for Python scripts
Reads, checks, edits, merges and converts channel files from Python 3, through
the shared library, and lists of other formats through chlist.")
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-channel-list)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3 (>= 3.11), libchannel1 (>= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS "chlist (>= ${PROJECT_VERSION})") # channel files alone need none
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA "${package_files}/python/postinst;${package_files}/python/prerm")

include(CPack)
