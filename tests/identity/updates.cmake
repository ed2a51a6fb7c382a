# The single-value updates and the PARI.
foreach(subject psn_update system_id_update hp_pari pli_update rf_carriers_update)
  quorvex_test(NAME identity_${subject} LABEL unit SOURCES test_${subject}.cpp
               LIBRARIES quorvex_core quorvex_test_support)
endforeach()
