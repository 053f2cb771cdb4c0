# What every target of ours shares: warnings, sanitizers, ccache; and one function a kind of target.

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

add_library(corvanta_options INTERFACE)
if(MSVC)
  target_compile_options(corvanta_options INTERFACE /W3)
  add_compile_options(/utf-8 /permissive- /Zc:__cplusplus /EHsc /bigobj)
else()
  if(NOT CORVANTA_FUZZ) # whose compiler warns of other things
    set(corvanta_werror -Werror)
  endif()
  target_compile_options(corvanta_options INTERFACE -Wall -Wextra -Wpedantic ${corvanta_werror} -Wshadow -Wnon-virtual-dtor
                                                    -Woverloaded-virtual -Wcast-align -Wformat=2)
endif()
if(MINGW AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # It takes joined texts for overlapping ones (GCC's bug 105651).
  target_compile_options(corvanta_options INTERFACE -Wno-restrict)
endif()
if(MINGW)
  # A program or a test says which library is the SDK's; what uses it may stand behind that on the linker's line.
  foreach(kind EXE SHARED MODULE)
    string(APPEND CMAKE_${kind}_LINKER_FLAGS " -Wl,--start-group")
  endforeach()
  string(APPEND CMAKE_CXX_STANDARD_LIBRARIES " -Wl,--end-group")
endif()
if(WIN32)
  # As libraries are called there.
  set(CMAKE_SHARED_LIBRARY_PREFIX "")
  set(CMAKE_SHARED_MODULE_PREFIX "")
  # Windows 7 and later. time_t keeps the size that the compiler's libraries were built with: what waits hands them a
  # timespec.
  add_compile_definitions(_WIN32_WINNT=0x0601 WINVER=0x0601 NOMINMAX WIN32_LEAN_AND_MEAN)
endif()
target_compile_definitions(corvanta_options INTERFACE QT_NO_CAST_TO_ASCII QT_DEPRECATED_WARNINGS)
if(CORVANTA_SANITIZER STREQUAL "address")
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
elseif(CORVANTA_SANITIZER STREQUAL "thread")
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
elseif(CORVANTA_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize=vptr -fno-omit-frame-pointer
                      -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
elseif(NOT CORVANTA_SANITIZER STREQUAL "")
  message(FATAL_ERROR "CORVANTA_SANITIZER is '${CORVANTA_SANITIZER}', not empty, address or thread")
endif()

# corvanta_library(NAME SOURCES ... LINKS ...): a static library of the client. Its headers are included with the
# path from src/ ("base/Settings.h").
function(corvanta_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE corvanta_options ${ARG_PRIVATE_LINKS})
endfunction()

if(WIN32)
  include(CorvantaWindowsTests)
endif()

# corvanta_test(NAME SOURCES ... LINKS ... [DISPLAY]): a Qt Test program, run without a display unless DISPLAY is
# given, then under a virtual one of its own.
function(corvanta_test name)
  cmake_parse_arguments(ARG "DISPLAY" "TIMEOUT" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  set_target_properties(${name} PROPERTIES AUTOMOC ON RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(${name} PRIVATE corvanta_options Qt5::Test ${ARG_LINKS})
  if(WIN32)
    add_test(NAME ${name} COMMAND ${name})
    if(NOT name IN_LIST corvanta_windows_tests)
      set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON)
      set_property(TEST ${name} PROPERTY DISABLED ON)
    endif()
    if(ARG_DISPLAY)
      # They share one display, and the end-to-end tests its keyboard: one at a time.
      set_property(TEST ${name} PROPERTY RUN_SERIAL ON)
    else()
      set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
    endif()
  elseif(ARG_DISPLAY)
    add_test(NAME ${name} COMMAND "${PROJECT_SOURCE_DIR}/tests/support/with-display" $<TARGET_FILE:${name}>)
  else()
    add_test(NAME ${name} COMMAND ${name})
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
  endif()
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 300)
  endif()
  if(WIN32)
    math(EXPR ARG_TIMEOUT "${ARG_TIMEOUT} * 4") # Wine starts programs and opens files slowly
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT})
  corvanta_sanitized_test(${name})
endfunction()

# corvanta_sanitized_test(NAME): what a test needs where it is built with a sanitizer.
function(corvanta_sanitized_test name)
  if(CORVANTA_SANITIZER STREQUAL "thread")
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
      "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/tsan.supp:halt_on_error=1:second_deadlock_stack=1")
  elseif(CORVANTA_SANITIZER STREQUAL "address")
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
      "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp" "ASAN_OPTIONS=detect_leaks=1")
  endif()
endfunction()
