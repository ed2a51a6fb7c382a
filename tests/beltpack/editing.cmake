# Writing, the settings file, the summary and the editing controls.
foreach(subject write write_failures settings_file settings_file_reader settings_file_faults
                settings_summary production_values editing)
  quorvex_test(NAME beltpack_${subject} LABEL unit SOURCES test_${subject}.cpp
               LIBRARIES quorvex_core quorvex_test_support)
endforeach()
