# Build calls of this tree: every library folder, test and tool is one call naming what it needs.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(LORV_BIN ${CMAKE_CURRENT_BINARY_DIR}/bin)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${LORV_BIN})
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${LORV_BIN})

# A precompiled header stands in for the first thousands of lines of each source. The cache takes part if it may trust the
# dates and defines of such a header; without one of both the build is the same, only slower.
find_program(CCACHE ccache)
find_program(LORV_ENV env)
if(CCACHE AND LORV_ENV)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${LORV_ENV} CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
                                  ${CCACHE})
endif()

# What every file of ours is compiled with. No contraction of a*b+c into one rounding: a formula gives the
# same last bit on every machine. The virtual table of the arrays is the suite's and has no destructor in it, so
# a class with one is no fault by itself: deleting an object by a base without one is, of which -Wall warns.
add_library(lorv_options INTERFACE)
target_include_directories(lorv_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(lorv_options INTERFACE -Wall -Wextra -Wconversion -Wsign-conversion -Wshadow
                       -Woverloaded-virtual -ffp-contract=off
                       -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
if(LORV_WERROR)
  target_compile_options(lorv_options INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # gcc 12 warns about overlapping copies inside its own std::string::assign.
  target_compile_options(lorv_options INTERFACE -Wno-restrict)
  if(LORV_PCH)
    # The cache sees what a precompiled header was made of.
    target_compile_options(lorv_options INTERFACE -fpch-preprocess)
  endif()
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

if(LORV_HOSTILE)
  # Variables that nobody set hold a pattern; blocks of the heap do by MALLOC_PERTURB_, which the test preset sets.
  target_compile_definitions(lorv_options INTERFACE LORV_HOSTILE _GLIBCXX_DEBUG)
  target_compile_options(lorv_options INTERFACE -ftrivial-auto-var-init=pattern)
endif()

find_package(ZLIB REQUIRED)
find_package(Threads REQUIRED)
set(LORV_SYSTEM_LIBRARIES ZLIB::ZLIB Threads::Threads)
if(WIN32)
  list(APPEND LORV_SYSTEM_LIBRARIES ole32 oleaut32 oleacc uuid shell32 version comdlg32 gdi32 imm32 user32 advapi32)
endif()

# What most sources of library and tools include, precompiled: half the time to compile one. `owner` is the first target
# of those with the same definitions, which share its header. Warnings of the optimizer about the system's own headers are
# no longer held back where these come precompiled, and gcc 12 takes copies of texts there for overlong ones: these
# warnings are off then. Presets without LORV_LIBRARY_PCH (linux-release, linux-clang and those with sanitizers) have them,
# and see that each source includes what it needs.
function(lorv_precompiled target owner)
  if(NOT LORV_PCH OR NOT LORV_LIBRARY_PCH)
    return()
  endif()
  target_compile_options(${target} PRIVATE -Wno-stringop-overflow -Wno-stringop-overread -Wno-array-bounds)
  if(NOT target STREQUAL owner)
    target_precompile_headers(${target} REUSE_FROM ${owner})
  else()
    target_precompile_headers(${target} PRIVATE <algorithm> <array> <functional> <map> <memory> <optional> <string>
                              <string_view> <utility> <vector> <framework/native/native_types.h> <framework/text/cstring.h>)
  endif()
endfunction()

# Every source of the library is compiled once, as part of the layer whose folder it stands in; the shared library
# and the archive for tests of internals are made of the layers' objects.
set(LORV_LAYERS "")
function(lorv_layer folder)
  set(target lorv_layer_${folder})
  add_library(${target} OBJECT)
  target_compile_definitions(${target} PRIVATE COMM_LORV_BUILDING)
  target_link_libraries(${target} PUBLIC lorv_options ${LORV_SYSTEM_LIBRARIES})
  lorv_precompiled(${target} lorv_layer_framework)
  set(LORV_LAYERS ${LORV_LAYERS} ${folder} PARENT_SCOPE)
  set(LORV_LAYER ${folder} PARENT_SCOPE)
endfunction()

# Adds the sources of the calling folder to its layer.
function(lorv_sources)
  list(TRANSFORM ARGN PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  target_sources(lorv_layer_${LORV_LAYER} PRIVATE ${ARGN})
endfunction()

# The sources of the calling folder that one system needs: win32/ or posix/ stands in their path.
function(lorv_native_sources system)
  if((system STREQUAL "win32" AND WIN32) OR (system STREQUAL "posix" AND NOT WIN32))
    lorv_sources(${ARGN})
  endif()
endfunction()

# Options for single sources of the calling folder, which then do without the precompiled header.
function(lorv_source_options options)
  set_source_files_properties(${ARGN} TARGET_DIRECTORY lorv_options PROPERTIES COMPILE_OPTIONS "${options}"
                              SKIP_PRECOMPILE_HEADERS ON)
endfunction()

# The layers up to each one must link by themselves: a call into a layer that stands below is an undefined symbol. One is
# meant: lorv::ChosenDesktop of framework/ports, a port that is a function, which platform/choice answers.
set(LORV_ANSWERED_BELOW_framework -Wl,--defsym=_ZN4lorv13ChosenDesktopEv=0)
function(lorv_check_layers)
  set(objects "")
  foreach(folder IN LISTS LORV_LAYERS)
    list(APPEND objects $<TARGET_OBJECTS:lorv_layer_${folder}>)
    add_library(lorv_up_to_${folder} MODULE ${objects})
    target_link_libraries(lorv_up_to_${folder} PRIVATE lorv_options ${LORV_SYSTEM_LIBRARIES})
    target_link_options(lorv_up_to_${folder} PRIVATE -Wl,--no-undefined ${LORV_ANSWERED_BELOW_${folder}})
  endforeach()
endfunction()

function(lorv_finish_library)
  list(TRANSFORM LORV_LAYERS REPLACE "(.+)" "$<TARGET_OBJECTS:lorv_layer_\\1>" OUTPUT_VARIABLE objects)
  add_library(Comm_LORV SHARED ${objects})
  target_link_libraries(Comm_LORV PRIVATE lorv_options ${LORV_SYSTEM_LIBRARIES})
  target_compile_features(Comm_LORV INTERFACE cxx_std_20)
  target_include_directories(Comm_LORV INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
                             $<INSTALL_INTERFACE:include/Comm_LORV>)
  set_target_properties(Comm_LORV PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  if(NOT WIN32)
    # Calls within the library go straight to their goal, as they do on Windows.
    target_link_options(Comm_LORV PRIVATE -Wl,-Bsymbolic-functions)
  endif()
  if(WIN32)
    target_compile_definitions(Comm_LORV INTERFACE UNICODE _UNICODE)
    target_link_libraries(Comm_LORV INTERFACE oleaut32)
    set_target_properties(Comm_LORV PROPERTIES PREFIX "")
  endif()
  add_library(Comm_LORV::Comm_LORV ALIAS Comm_LORV)
  add_library(lorv_internals STATIC EXCLUDE_FROM_ALL ${objects})
  target_link_libraries(lorv_internals PUBLIC lorv_options ${LORV_SYSTEM_LIBRARIES})
  target_compile_definitions(lorv_internals INTERFACE COMM_LORV_STATIC)
  if(LORV_CHECK_LAYERS)
    lorv_check_layers()
  endif()
endfunction()
