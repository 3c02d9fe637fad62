# Whole erasures through the window of the real program, from outside. Under the sanitizers, the
# shorter half of them: what takes long there is the erasing itself.
set(e2e_names "")
set(e2e_citizen_names "")
if(VANTOREL_SANITIZE)
  set(e2e_names
    test_a_drop_on_the_window_is_queued_and_erased_after_start
    test_a_second_run_starts_from_nothing
    test_keyboard_alone_gets_from_the_panel_to_the_summary
    test_preferences_act_at_once_and_outlive_the_program
    test_what_cannot_be_erased_is_said_and_stays)
  set(e2e_citizen_names
    test_a_later_start_leaves_its_files_to_the_first
    test_about_comes_by_the_menu_and_goes_by_escape
    test_terminated_in_a_run_it_finishes_the_file_in_work
    test_what_failed_stands_in_the_error_log_and_is_shown_in_its_folder)
endif()
# The system's own Python: the accessibility bus is read through its packages.
add_test(NAME e2e.Erase
  COMMAND /usr/bin/python3 "${CMAKE_CURRENT_SOURCE_DIR}/e2e/erase.py" $<TARGET_FILE:vantorel> ${e2e_names})
add_test(NAME e2e.Citizen
  COMMAND /usr/bin/python3 "${CMAKE_CURRENT_SOURCE_DIR}/e2e/citizen.py" $<TARGET_FILE:vantorel>
          ${e2e_citizen_names})
set_tests_properties(e2e.Erase e2e.Citizen PROPERTIES LABELS e2e TIMEOUT 900)
if(VANTOREL_SANITIZE)
  # The keyboard library hands out text that ends with its buffer, which the strict check minds.
  set_tests_properties(e2e.Erase e2e.Citizen PROPERTIES
    ENVIRONMENT "VANTOREL_TEST_PATIENCE=3;ASAN_OPTIONS=detect_leaks=1:strict_string_checks=0")
endif()
