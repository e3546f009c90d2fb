# Build through the executable: generated documents of 1,000, 10,000 and 100,000
# themed colours in namespaced groups, built to CSS with -b. Prints wall time and
# peak memory of each run; `build_bench --generate N file` only writes a document.
if(TARGET TintWorkCLI)
  add_executable(build_bench ${CMAKE_CURRENT_LIST_DIR}/BuildBench.cpp)
  target_link_libraries(build_bench PRIVATE tintwork_file tintwork_model tintwork_settings tintwork_warnings)
  target_compile_definitions(build_bench PRIVATE TINTWORK_CLI_PATH="$<TARGET_FILE:TintWorkCLI>")
  add_dependencies(build_bench TintWorkCLI tintwork_templates)
endif()
