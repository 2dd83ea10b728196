# What every target of the project shares: warnings, sanitizers, precompiled headers.

add_library(velmo_options INTERFACE)
target_compile_options(velmo_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Werror
  $<$<BOOL:${CCACHE_PROGRAM}>:$<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>>)
target_compile_definitions(velmo_options INTERFACE
  QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(VELMO_SANITIZE)
  target_compile_options(velmo_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(velmo_options INTERFACE -fsanitize=address,undefined)
endif()
if(VELMO_FUZZ)
  target_compile_options(velmo_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Precompiled headers are made once and shared: one set for logic, one for everything with windows, one for tests.
file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/pch.cpp CONTENT "// Only for the headers.\n")
add_library(velmo_logic_pch OBJECT ${CMAKE_CURRENT_BINARY_DIR}/pch.cpp)
target_link_libraries(velmo_logic_pch PRIVATE Qt6::Core velmo_options)
target_precompile_headers(velmo_logic_pch PRIVATE <QtCore>)
add_library(velmo_forms_pch OBJECT ${CMAKE_CURRENT_BINARY_DIR}/pch.cpp)
target_link_libraries(velmo_forms_pch PRIVATE Qt6::Widgets velmo_options)
target_precompile_headers(velmo_forms_pch PRIVATE <QtWidgets>)
add_library(velmo_test_pch OBJECT ${CMAKE_CURRENT_BINARY_DIR}/pch.cpp)
target_link_libraries(velmo_test_pch PRIVATE Qt6::Widgets GTest::gmock velmo_options)
# Tests spend their time in what they test; optimising them would be most of the time that building takes.
set(velmo_test_options $<$<NOT:$<CONFIG:Release>>:-O0>)
target_compile_options(velmo_test_pch PRIVATE ${velmo_test_options})
target_precompile_headers(velmo_test_pch PRIVATE <QtWidgets> <gmock/gmock.h> <gtest/gtest.h>)
set_target_properties(velmo_logic_pch velmo_forms_pch velmo_test_pch PROPERTIES AUTOMOC OFF)

# velmo_logic(<name> SOURCES ... [LINK ...]): logic; it cannot see a window, because it does not link Widgets.
function(velmo_logic name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC Qt6::Core ${ARG_LINK} PRIVATE velmo_options)
  target_precompile_headers(${name} REUSE_FROM velmo_logic_pch)
endfunction()

# velmo_forms(<name> SOURCES ... [LINK ...]): windows and the controls they hold.
function(velmo_forms name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC Qt6::Widgets ${ARG_LINK} PRIVATE velmo_options)
  target_precompile_headers(${name} REUSE_FROM velmo_forms_pch)
endfunction()

# A program with windows that takes the precompiled headers of pch.
function(velmo_executable name pch)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE Qt6::Widgets ${ARG_LINK} velmo_options)
  target_precompile_headers(${name} REUSE_FROM ${pch})
endfunction()

# velmo_program(<name> SOURCES ... [LINK ...]): a program with windows.
function(velmo_program name)
  velmo_executable(${name} velmo_forms_pch ${ARGN})
endfunction()

# velmo_test(<name> SOURCES ... [LINK ...]): a GoogleTest program; CTest runs its tests one by one.
function(velmo_test name)
  velmo_executable(${name} velmo_test_pch ${ARGN})
  target_link_libraries(${name} PRIVATE velmo_test_support)
  target_compile_options(${name} PRIVATE ${velmo_test_options})
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 120)
endfunction()
