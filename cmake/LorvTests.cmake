# Build calls of the tests: one test program a folder.

# Test programs are not optimized: that is a quarter of the time to compile them, and what they measure and compare is
# the library's own code, which is. `support` is the library that holds the precompiled header of such tests; headers that
# follow are added to its own.
function(lorv_test_code target support)
  target_compile_options(${target} PRIVATE -O0)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # A class of tests in a group stands in an included file, as a class of a header would.
    target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
  endif()
  if(LORV_SANITIZE MATCHES "undefined")
    # At each use of a pointer: a quarter of the time to compile a test. The address sanitizer sees what a wrong one reads.
    target_compile_options(${target} PRIVATE -fno-sanitize=null,alignment,object-size,vptr)
  endif()
  if(WIN32)
    # Each function that is not inlined takes sections of its own; their usual count is soon reached.
    target_compile_options(${target} PRIVATE -Wa,-mbig-obj)
  else()
    # Archives and programs alike, or the precompiled header would not fit both.
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    target_compile_options(${target} PRIVATE -fPIE)
  endif()
  if(LORV_PCH AND NOT target STREQUAL support)
    target_precompile_headers(${target} REUSE_FROM ${support})
  elseif(LORV_PCH)
    target_precompile_headers(${target} PRIVATE <gtest/gtest.h> <algorithm> <array> <cmath> <functional> <map> <memory>
                              <string> <string_view> <utility> <vector>
                              <tests/support/print.h> ${ARGN})
  endif()
endfunction()

# Test sources are compiled some at a time: what each costs is reading the common headers and making what their templates
# make, once for all of a group. The names of `sources` become those of `grouped`: a source that only includes others for each
# run of neighbours from one kind of folder (those of one system see its headers), of at most so many bytes. A source stands
# alone where its names or macros must (SKIP_UNITY_BUILD_INCLUSION), and so does one that is no test.
set(LORV_GROUP_BYTES 60000)
function(lorv_group_sources name grouped)
  set(result "")
  set(group "")
  set(sum 0)
  foreach(source IN LISTS ARGN ITEMS end)  # which is no source, and closes the last group
    set(bytes ${LORV_GROUP_BYTES})
    if(source MATCHES "^\\$<")
      list(APPEND result ${source})
      continue()
    endif()
    cmake_path(ABSOLUTE_PATH source NORMALIZE OUTPUT_VARIABLE path)
    cmake_path(RELATIVE_PATH path BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
    get_source_file_property(alone "${source}" SKIP_UNITY_BUILD_INCLUSION)
    if(path MATCHES "^tests/.*\\.cpp$" AND LORV_TEST_GROUPS AND NOT alone)
      file(SIZE ${PROJECT_SOURCE_DIR}/${path} bytes)
    endif()
    string(REGEX MATCH "/(win32|posix|qt)/" kind "${path}")
    math(EXPR sum "${sum} + ${bytes}")
    if(group AND (sum GREATER LORV_GROUP_BYTES OR NOT kind STREQUAL group_kind))
      list(LENGTH result number)
      lorv_group_source(${name}_${number} result ${group})
      set(group "")
    endif()
    if(NOT group)
      set(sum ${bytes})
      set(group_kind "${kind}")
    endif()
    list(APPEND group ${path})
  endforeach()
  set(${grouped} ${result} PARENT_SCOPE)
endfunction()

# Appends to `list` the one source, or one that includes all.
function(lorv_group_source name list)
  list(LENGTH ARGN count)
  if(count EQUAL 1)
    set(source ${PROJECT_SOURCE_DIR}/${ARGN})
  else()
    set(source ${CMAKE_CURRENT_BINARY_DIR}/groups/${name}.cpp)
    list(TRANSFORM ARGN REPLACE "(.+)" "#include \"\\1\"\n" OUTPUT_VARIABLE includes)
    list(JOIN includes "" content)
    file(CONFIGURE OUTPUT ${source} CONTENT "${content}" @ONLY)
  endif()
  set(${list} ${${list}} ${source} PARENT_SCOPE)
endfunction()

# One test program a folder: lorv_test(framework cstring_test.cpp ...) makes lorv_test_framework. A folder whose tests
# share more headers names its own support library in LORV_TEST_SUPPORT.
set(LORV_LONG_TESTS TEXPRESSCAL compress conformance grid image office)
function(lorv_test name)
  set(support lorv_test_support)
  if(LORV_TEST_SUPPORT)
    set(support ${LORV_TEST_SUPPORT})
  endif()
  lorv_group_sources(${name} sources ${ARGN})
  add_executable(lorv_test_${name} ${sources})
  target_link_libraries(lorv_test_${name} PRIVATE ${support})
  lorv_test_code(lorv_test_${name} ${support})
  add_test(NAME ${name} COMMAND lorv_test_${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 900)
  if(name IN_LIST LORV_LONG_TESTS)
    # Started first: one that begins last would run alone, on one of all cores.
    set_tests_properties(${name} PROPERTIES COST 50)
  endif()
endfunction()

# A test program beside the shared library, as a user's program is; the archive of internals has no place there.
# lorv_shared_test(NAME SOURCE...) makes lorv_test_<name>; the test itself is added by the caller.
function(lorv_shared_test name)
  lorv_group_sources(${name} sources ${ARGN})
  add_executable(lorv_test_${name} ${sources})
  target_link_libraries(lorv_test_${name} PRIVATE lorv_shared_test_support)
  lorv_test_code(lorv_test_${name} lorv_shared_test_support)
endfunction()

# Sources that several test programs share, compiled once: lorv_test_objects(NAME SUPPORT SOURCE...).
function(lorv_test_objects name support)
  lorv_group_sources(${name} sources ${ARGN})
  add_library(${name} OBJECT EXCLUDE_FROM_ALL ${sources})
  target_link_libraries(${name} PUBLIC ${support})
  lorv_test_code(${name} ${support})
endfunction()

# Tests that start threads stand in programs of their own, which the thread sanitizer's build runs as well:
# lorv_thread_test(framework_threads locks_test.cpp ...).
function(lorv_thread_test name)
  lorv_test(${name} ${ARGN})
  set_tests_properties(${name} PROPERTIES LABELS threads)
  add_dependencies(lorv_thread_tests lorv_test_${name})
endfunction()

# Tests of real windows, which need a screen and the keyboard to themselves.
function(lorv_screen_test name)
  lorv_test(${name} ${ARGN})
  # One at a time, so they are begun before all others.
  set_tests_properties(${name} PROPERTIES RESOURCE_LOCK screen COST 100)
  if(CMAKE_CROSSCOMPILING_EMULATOR)
    set_target_properties(lorv_test_${name} PROPERTIES
                          CROSSCOMPILING_EMULATOR "${CMAKE_CROSSCOMPILING_EMULATOR};--screen")
  endif()
endfunction()
