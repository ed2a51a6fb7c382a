# What every target of this tree compiles with.
add_library(quorvex_build INTERFACE)
target_compile_options(quorvex_build INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -Wpedantic $<$<BOOL:${QUORVEX_WERROR}>:-Werror>)
if(QUORVEX_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

# quorvex_test(NAME <name> LABEL unit|window|bench-top SOURCES <file>... [LIBRARIES <target>...] [TIMEOUT <s>])
# Each source test_*.cpp holds a test class and includes test_*.moc at its end.
# One Qt Test executable, one CTest entry, on the offscreen platform.
function(quorvex_test)
  cmake_parse_arguments(T "" "NAME;LABEL;TIMEOUT" "SOURCES;LIBRARIES" ${ARGN})
  if(NOT T_TIMEOUT)
    set(T_TIMEOUT 60)
  endif()
  add_executable(${T_NAME} ${T_SOURCES})
  set_target_properties(${T_NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  # Named by hand: AUTOMOC looks for what is to be done anew for each of the many executables, and takes longer.
  set(moc_folder ${CMAKE_CURRENT_BINARY_DIR}/${T_NAME}_moc)
  foreach(source ${T_SOURCES})
    if(source MATCHES "^test_(.*)\\.cpp$")
      qt_generate_moc(${source} ${moc_folder}/test_${CMAKE_MATCH_1}.moc TARGET ${T_NAME})
      target_sources(${T_NAME} PRIVATE ${moc_folder}/test_${CMAKE_MATCH_1}.moc)
    endif()
  endforeach()
  target_include_directories(${T_NAME} PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/tests ${moc_folder})
  target_link_libraries(${T_NAME} PRIVATE quorvex_build ${T_LIBRARIES} Qt6::Test)
  # What is tested is optimised; a test itself takes longer to be compiled than to run.
  target_compile_options(${T_NAME} PRIVATE $<$<CONFIG:RelWithDebInfo>:-O0 -g1>)
  add_test(NAME ${T_NAME} COMMAND ${T_NAME})
  set_tests_properties(${T_NAME} PROPERTIES LABELS ${T_LABEL} TIMEOUT ${T_TIMEOUT}
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QUORVEX_BIN=${CMAKE_BINARY_DIR}/bin")
endfunction()
