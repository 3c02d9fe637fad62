# libFuzzer needs clang; so the harnesses are built as a project of their own, and what they try is
# compiled once more.
include(ExternalProject)
find_program(VANTOREL_CLANG clang++ REQUIRED)
ExternalProject_Add(vantorel_fuzz
  SOURCE_DIR "${CMAKE_CURRENT_SOURCE_DIR}/fuzz"
  BINARY_DIR "${CMAKE_CURRENT_BINARY_DIR}/fuzz"
  PREFIX "${CMAKE_CURRENT_BINARY_DIR}/fuzz-project"
  CMAKE_ARGS "-DCMAKE_CXX_COMPILER=${VANTOREL_CLANG}" -DCMAKE_BUILD_TYPE=Debug
             "-DCMAKE_CXX_FLAGS_DEBUG=-O1 -g1"
  INSTALL_COMMAND ""
  BUILD_ALWAYS ON)

foreach(harness Appcast FileUri Settings VTLDate)
  add_test(NAME fuzz.${harness} COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/fuzz/run"
    "${CMAKE_CURRENT_BINARY_DIR}/fuzz/${harness}Fuzzer" "${CMAKE_CURRENT_SOURCE_DIR}/fuzz/corpus/${harness}")
  set_tests_properties(fuzz.${harness} PROPERTIES LABELS fuzz TIMEOUT 2400)
endforeach()
set_tests_properties(fuzz.VTLDate PROPERTIES ENVIRONMENT "TZ=CET-1CEST,M3.5.0,M10.5.0/3")
