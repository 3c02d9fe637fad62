# What is installed: the files themselves, and what desktops and file managers make of them.
vantorel_test(desktop/IconFilesTest GUI LINKS vantorel_ui_controls)
target_compile_definitions(desktop_IconFilesTest PRIVATE VANTOREL_ICONS="${PROJECT_BINARY_DIR}/desktop")
add_dependencies(desktop_IconFilesTest vantorel_icons)

add_test(NAME desktop.Install
  COMMAND /usr/bin/python3 "${CMAKE_CURRENT_SOURCE_DIR}/desktop/install.py" "${CMAKE_COMMAND}" "${PROJECT_BINARY_DIR}")
set_tests_properties(desktop.Install PROPERTIES LABELS desktop)
if(VANTOREL_SANITIZE)
  # As in e2e/Tests.cmake.
  set_tests_properties(desktop.Install PROPERTIES
    ENVIRONMENT "VANTOREL_TEST_PATIENCE=3;ASAN_OPTIONS=detect_leaks=1:strict_string_checks=0")
endif()
