# Build calls of this tree: every library folder, test and tool is one call naming what it needs.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

# What every file of ours is compiled with. No contraction of a*b+c into one rounding: a formula gives the
# same last bit on every machine.
add_library(lorv_options INTERFACE)
target_include_directories(lorv_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(lorv_options INTERFACE -Wall -Wextra -Wconversion -Wsign-conversion -Wshadow
                       -Wnon-virtual-dtor -Woverloaded-virtual -Werror -ffp-contract=off
                       -ffile-prefix-map=${CMAKE_SOURCE_DIR}/=)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # gcc 12 warns about overlapping copies inside its own std::string::assign.
  target_compile_options(lorv_options INTERFACE -Wno-restrict)
elseif(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # A keyed array applies the sorting base to itself, where "virtual" both declares and overrides.
  target_compile_options(lorv_options INTERFACE -Wno-inconsistent-missing-override)
endif()
if(WIN32)
  target_compile_definitions(lorv_options INTERFACE UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX
                             _WIN32_WINNT=0x0A00 STRICT)
endif()
if(LORV_SANITIZE)
  target_compile_options(lorv_options INTERFACE -fsanitize=${LORV_SANITIZE} -fno-omit-frame-pointer
                         -fno-sanitize-recover=all)
  target_link_options(lorv_options INTERFACE -fsanitize=${LORV_SANITIZE})
endif()

find_package(ZLIB REQUIRED)
find_package(Threads REQUIRED)
set(LORV_SYSTEM_LIBRARIES ZLIB::ZLIB Threads::Threads)
if(WIN32)
  list(APPEND LORV_SYSTEM_LIBRARIES ole32 oleaut32 uuid shell32 version comdlg32 gdi32 imm32 user32 advapi32)
endif()

# Every source of the library is compiled once; the shared library and the archive for tests of internals
# are made of the same objects.
add_library(lorv_objects OBJECT)
target_compile_definitions(lorv_objects PRIVATE COMM_LORV_BUILDING)
target_link_libraries(lorv_objects PUBLIC lorv_options ${LORV_SYSTEM_LIBRARIES})

# Adds the sources of the calling folder to the library.
function(lorv_sources)
  list(TRANSFORM ARGN PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  target_sources(lorv_objects PRIVATE ${ARGN})
endfunction()

# The sources of the calling folder that one system needs: win32/ or posix/ stands in their path.
function(lorv_native_sources system)
  if((system STREQUAL "win32" AND WIN32) OR (system STREQUAL "posix" AND NOT WIN32))
    lorv_sources(${ARGN})
  endif()
endfunction()

function(lorv_finish_library)
  add_library(Comm_LORV SHARED $<TARGET_OBJECTS:lorv_objects>)
  target_link_libraries(Comm_LORV PRIVATE lorv_options ${LORV_SYSTEM_LIBRARIES})
  target_include_directories(Comm_LORV INTERFACE $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}>
                             $<INSTALL_INTERFACE:include/Comm_LORV>)
  set_target_properties(Comm_LORV PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  if(NOT WIN32)
    # Calls within the library go straight to their goal, as they do on Windows.
    target_link_options(Comm_LORV PRIVATE -Wl,-Bsymbolic-functions)
  endif()
  if(WIN32)
    target_compile_definitions(Comm_LORV INTERFACE UNICODE _UNICODE)
    set_target_properties(Comm_LORV PROPERTIES PREFIX "")
  endif()
  add_library(lorv_internals STATIC $<TARGET_OBJECTS:lorv_objects>)
  target_link_libraries(lorv_internals PUBLIC lorv_options ${LORV_SYSTEM_LIBRARIES})
  target_compile_definitions(lorv_internals INTERFACE COMM_LORV_STATIC)
endfunction()

# One test program a folder: lorv_test(framework cstring_test.cpp ...) makes lorv_test_framework.
function(lorv_test name)
  add_executable(lorv_test_${name} ${ARGN})
  target_link_libraries(lorv_test_${name} PRIVATE lorv_test_support)
  add_test(NAME ${name} COMMAND lorv_test_${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 900)
endfunction()

# Tests that start threads stand in programs of their own, which the thread sanitizer's build runs as well:
# lorv_thread_test(framework_threads locks_test.cpp ...).
add_custom_target(lorv_thread_tests)
function(lorv_thread_test name)
  lorv_test(${name} ${ARGN})
  set_tests_properties(${name} PROPERTIES LABELS threads)
  add_dependencies(lorv_thread_tests lorv_test_${name})
endfunction()

# Tests of real windows, which need a screen and the keyboard to themselves.
function(lorv_screen_test name)
  lorv_test(${name} ${ARGN})
  set_tests_properties(${name} PROPERTIES RESOURCE_LOCK screen)
  if(CMAKE_CROSSCOMPILING_EMULATOR)
    set_target_properties(lorv_test_${name} PROPERTIES
                          CROSSCOMPILING_EMULATOR "${CMAKE_CROSSCOMPILING_EMULATOR};--screen")
  endif()
endfunction()
