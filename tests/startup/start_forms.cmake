add_kelvara_test(start_test
    SOURCES ../support/main_widgets.cpp frminicio_test.cpp login_test.cpp start_steps_test.cpp
    LINKS test_clinic startup_forms Qt6::Test)
