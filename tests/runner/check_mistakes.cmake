# A runner that cannot fail would hide everything: what it says of broken files is compared.
execute_process(
  COMMAND ${CMAKE_COMMAND} -E env --unset=OMBRIX_POSTGRES ${RUNNER}
          --company ../scenarios/company.sql mistakes.txt ../scenarios/documents.txt
  WORKING_DIRECTORY ${CMAKE_CURRENT_LIST_DIR} OUTPUT_VARIABLE said RESULT_VARIABLE code)
file(READ ${CMAKE_CURRENT_LIST_DIR}/mistakes.golden expected)
if(code EQUAL 0 OR NOT said STREQUAL expected)
  message(FATAL_ERROR "The runner leaves with ${code} and says:\n${said}")
endif()
