# What every target of this tree compiles with.
add_library(quorvex_build INTERFACE)
target_compile_options(quorvex_build INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -Wpedantic $<$<BOOL:${QUORVEX_WERROR}>:-Werror>)
if(QUORVEX_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

if(QUORVEX_FUZZ)
  # The library's own assertions see what no sanitizer does: an empty optional, a place past a text's end.
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

# quorvex_tests(LABEL unit|window|bench-top|soak CLASSES <class>... [SUFFIX <suffix>] [TIMEOUT <s>] [ON_UNIX])
# Adds test classes to the test program of the folder that calls it. TestNumberText stands in test_number_text.cpp
# and is the CTest entry <folder>_number_text<suffix>, a process of its own. ON_UNIX: they need what only Unix has, as
# the pseudo-terminals of a bench-top and of the soak, and are left out elsewhere.
function(quorvex_tests)
  cmake_parse_arguments(T "ON_UNIX" "LABEL;SUFFIX;TIMEOUT" "CLASSES" ${ARGN})
  if(NOT UNIX AND (T_ON_UNIX OR T_LABEL MATCHES "^(bench-top|soak)$"))
    return()
  endif()
  if(NOT T_TIMEOUT)
    set(T_TIMEOUT 60)
  endif()
  if(QUORVEX_SANITIZE OR CMAKE_CROSSCOMPILING)  # both slow a test down, the latter by its emulator
    math(EXPR T_TIMEOUT "${T_TIMEOUT} * 4")
  endif()
  cmake_path(GET CMAKE_CURRENT_SOURCE_DIR FILENAME folder)
  foreach(class ${T_CLASSES})
    string(REGEX REPLACE "([A-Z])" "_\\1" subject ${class})
    string(TOLOWER ${subject} subject)
    string(REGEX REPLACE "^_test_" "" subject ${subject})
    set(entry ${folder}_${subject}${T_SUFFIX})
    target_sources(test_${folder} PRIVATE test_${subject}.cpp)
    add_test(NAME ${entry} COMMAND test_${folder} ${class})
    set_tests_properties(${entry} PROPERTIES LABELS ${T_LABEL} TIMEOUT ${T_TIMEOUT})
  endforeach()
endfunction()
