# Installing: headers, libraries, the CMake package `channel` and channel.pc. Both packages find their prefix relative to
# themselves, so that an installation may be moved or staged. Components are named after the Debian packages that they
# go into: what a host needs to run, and what it needs to be built.

include(CMakePackageConfigHelpers)

install(DIRECTORY include/channel DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT libchannel-dev
        FILES_MATCHING PATTERN "*.h")
install(DIRECTORY base DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT libchannel-dev
        FILES_MATCHING PATTERN "*.h")
install(TARGETS channel channel_static channelbase channelbase_static EXPORT channelTargets
        LIBRARY COMPONENT libchannel1 NAMELINK_COMPONENT libchannel-dev
        ARCHIVE COMPONENT libchannel-dev)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/channel")
configure_package_config_file(cmake/channelConfig.cmake.in "${PROJECT_BINARY_DIR}/channelConfig.cmake"
                              INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/channelConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(EXPORT channelTargets NAMESPACE channel:: DESTINATION "${package_dir}" COMPONENT libchannel-dev)
install(FILES "${PROJECT_BINARY_DIR}/channelConfig.cmake" "${PROJECT_BINARY_DIR}/channelConfigVersion.cmake"
        DESTINATION "${package_dir}" COMPONENT libchannel-dev)

# Folders that are given as absolute ones lie outside the prefix, and do not move with it.
foreach(folder INCLUDEDIR LIBDIR)
  if(IS_ABSOLUTE "${CMAKE_INSTALL_${folder}}")
    set(CHANNEL_PC_${folder} "${CMAKE_INSTALL_FULL_${folder}}")
  else()
    set(CHANNEL_PC_${folder} "\${prefix}/${CMAKE_INSTALL_${folder}}")
  endif()
endforeach()
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(CHANNEL_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
else()
  file(RELATIVE_PATH CHANNEL_PC_PREFIX "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
  string(REGEX REPLACE "/$" "" CHANNEL_PC_PREFIX "\${pcfiledir}/${CHANNEL_PC_PREFIX}")
endif()
configure_file(cmake/channel.pc.in "${PROJECT_BINARY_DIR}/channel.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/channel.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT libchannel-dev)
