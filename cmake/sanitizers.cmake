# CHANNEL_SANITIZE: AddressSanitizer and UndefinedBehaviorSanitizer on everything that is built here; the first finding
# ends the program. CHANNEL_FUZZ: the same, counting coverage for libFuzzer.

if(CHANNEL_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "channel: CHANNEL_FUZZ needs clang")
  endif()
  set(CHANNEL_SANITIZE ON)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(CHANNEL_SANITIZE)
  # Checks that need C++ run-time types are off: the library has none, and hosts in C link no C++ runtime of a sanitizer.
  set(CHANNEL_SANITIZE_FLAGS -fsanitize=address,undefined -fno-sanitize=vptr -fno-sanitize-recover=all
                             -fno-omit-frame-pointer)
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    list(APPEND CHANNEL_SANITIZE_FLAGS -fno-sanitize=function)
  endif()
  add_compile_options(${CHANNEL_SANITIZE_FLAGS})
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(${CHANNEL_SANITIZE_FLAGS})
endif()
