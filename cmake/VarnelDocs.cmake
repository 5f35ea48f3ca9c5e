# The HTML reference: `cmake --build build --target docs` writes build/docs/html.
# Doxygen runs with every warning an error (an undocumented public member is
# one), and the "reference_docs" test runs it, so the reference cannot fall
# behind the headers. Without doxygen the test is skipped, not failed.
find_program(VARNEL_DOXYGEN doxygen)
set(VARNEL_DOCS_DIR ${CMAKE_CURRENT_BINARY_DIR}/docs)
configure_file(${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${VARNEL_DOCS_DIR}/Doxyfile @ONLY)
set(VARNEL_DOCS_COMMAND ${CMAKE_COMMAND} -DDOXYGEN=${VARNEL_DOXYGEN}
    -DDOXYFILE=${VARNEL_DOCS_DIR}/Doxyfile -DWARNINGS=${VARNEL_DOCS_DIR}/warnings.log
    -P ${PROJECT_SOURCE_DIR}/cmake/RunDoxygen.cmake)
add_custom_target(docs COMMAND ${VARNEL_DOCS_COMMAND}
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} COMMENT "Reference documentation in ${VARNEL_DOCS_DIR}/html"
  VERBATIM)
if(VARNEL_BUILD_TESTS)
  add_test(NAME reference_docs COMMAND ${VARNEL_DOCS_COMMAND} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  set_tests_properties(reference_docs PROPERTIES SKIP_RETURN_CODE 77 LABELS docs)
endif()

# The edit-status diagram of the guide is drawn from the transition table
# itself: a small program walks it and writes the dot file Doxygen draws.
add_executable(varnel_edit_status_graph ${PROJECT_SOURCE_DIR}/docs/edit_status_graph.cpp)
target_link_libraries(varnel_edit_status_graph PRIVATE varnel_internal)
target_include_directories(varnel_edit_status_graph PRIVATE ${PROJECT_SOURCE_DIR}/src)
varnel_warnings(varnel_edit_status_graph)
add_custom_command(OUTPUT ${VARNEL_DOCS_DIR}/edit_status.dot
  COMMAND varnel_edit_status_graph > ${VARNEL_DOCS_DIR}/edit_status.dot
  DEPENDS varnel_edit_status_graph COMMENT "Edit-status diagram from the transition table")
add_custom_target(edit_status_dot ALL DEPENDS ${VARNEL_DOCS_DIR}/edit_status.dot)
add_dependencies(docs edit_status_dot)
