add_kelvara_test(new_folder_test
    SOURCES new_folder_test.cpp first_run_test.cpp
    LINKS test_clinic)
add_kelvara_test(demo_clinic_test SOURCES demo_clinic_test.cpp LINKS test_clinic)
