# Runs doxygen on DOXYFILE and fails when it wrote any warning to WARNINGS.
# Exits with 77 (a skipped test) when doxygen is not installed.
if(NOT DOXYGEN)
  message("doxygen is not installed: the reference is not checked")
  cmake_language(EXIT 77)
endif()
file(REMOVE ${WARNINGS})
execute_process(COMMAND ${DOXYGEN} ${DOXYFILE} RESULT_VARIABLE status OUTPUT_QUIET)
if(EXISTS ${WARNINGS})
  file(READ ${WARNINGS} warnings)
endif()
if(NOT status EQUAL 0 OR warnings)
  message(FATAL_ERROR "doxygen failed or warned:\n${warnings}")
endif()
