# Run by ctest: adds the suites of one GoogleTest program as tests. In: target, program, emulator, lock, long,
# list_file.

if(NOT EXISTS "${program}")
  add_test("${target}_NOT_BUILT" "${target}_NOT_BUILT")
  return()
endif()

if("${program}" IS_NEWER_THAN "${list_file}")
  execute_process(COMMAND ${emulator} "${program}" --gtest_list_tests
                  OUTPUT_VARIABLE listing RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${program} --gtest_list_tests failed: ${result}\n${listing}")
  endif()
  file(WRITE "${list_file}" "${listing}")
endif()

# A suite stands at the start of a line and ends with a point, with a comment behind it when it is parameterised.
file(STRINGS "${list_file}" suites REGEX "^[A-Za-z0-9_/]+\\.")
foreach(suite IN LISTS suites)
  string(REGEX REPLACE "\\..*" "" suite "${suite}")
  set(name "${target}.${suite}")
  add_test("${name}" ${emulator} "${program}" "--gtest_filter=${suite}.*" --gtest_brief=1)
  set_tests_properties("${name}" PROPERTIES LABELS "${target}" TIMEOUT 600)
  if(lock AND suite MATCHES "${lock}")
    set_tests_properties("${name}" PROPERTIES RESOURCE_LOCK fixed_paths)
  endif()
  if(long AND suite MATCHES "${long}")
    set_tests_properties("${name}" PROPERTIES COST 1000)
  endif()
endforeach()
