# Installs the build into a fresh prefix, moves the prefix elsewhere and builds the
# example document with the moved executable.
file(REMOVE_RECURSE "${WORK_DIR}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${WORK_DIR}/a"
                RESULT_VARIABLE status OUTPUT_QUIET)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "cmake --install failed (${status})")
endif()
file(RENAME "${WORK_DIR}/a" "${WORK_DIR}/b")

execute_process(COMMAND "${WORK_DIR}/b/${BINDIR}/TintWorkCLI" -b "${EXAMPLE}" -o "${WORK_DIR}/out"
                RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT status EQUAL 0 OR NOT output STREQUAL "Build Completed Successfully\n")
  message(FATAL_ERROR "the moved executable failed (${status}): ${output}${errors}")
endif()
file(GLOB written "${WORK_DIR}/out/*.css")
if(NOT written)
  message(FATAL_ERROR "the moved executable wrote no style sheet")
endif()
file(REMOVE_RECURSE "${WORK_DIR}")
