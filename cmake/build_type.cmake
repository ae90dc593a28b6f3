# The build type when none is given, and what it means. Comes before project(), which fills the flags of every type.

get_property(multi_config GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
if(NOT multi_config AND NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Release, Debug, RelWithDebInfo or MinSizeRel" FORCE)
endif()

# Receivers are small: -O2 where CMake would take -O3.
foreach(language C CXX)
  set(CMAKE_${language}_FLAGS_RELEASE "-O2 -DNDEBUG" CACHE STRING "Flags of a Release build")
  set(CMAKE_${language}_FLAGS_DEBUG "-O1 -g" CACHE STRING "Flags of a Debug build")
endforeach()
