# Whole erasures through the window of the real program, from outside. Under the sanitizers, the
# shorter half of them: what takes long there is the erasing itself.
set(e2e_names "")
if(VANTOREL_SANITIZE)
  set(e2e_names
    test_a_drop_on_the_window_is_queued_and_erased_after_start
    test_a_second_run_starts_from_nothing
    test_keyboard_alone_gets_from_the_panel_to_the_summary
    test_preferences_act_at_once_and_outlive_the_program
    test_what_cannot_be_erased_is_said_and_stays)
endif()
# The system's own Python: the accessibility bus is read through its packages.
add_test(NAME e2e.Erase
  COMMAND /usr/bin/python3 "${CMAKE_CURRENT_SOURCE_DIR}/e2e/erase.py" $<TARGET_FILE:vantorel> ${e2e_names})
set_tests_properties(e2e.Erase PROPERTIES LABELS e2e TIMEOUT 900)
if(VANTOREL_SANITIZE)
  # The keyboard library hands out text that ends with its buffer, which the strict check minds.
  set_tests_properties(e2e.Erase PROPERTIES
    ENVIRONMENT "VANTOREL_TEST_PATIENCE=3;ASAN_OPTIONS=detect_leaks=1:strict_string_checks=0")
endif()
