# Import and build through the executable: generated Design Tokens files of 1,000,
# 10,000 and 100,000 colour tokens, imported with -i/-c and built to CSS. Prints wall
# time and peak memory of each run.
if(TARGET TintWorkCLI)
  add_executable(import_bench ${CMAKE_CURRENT_LIST_DIR}/ImportBench.cpp)
  target_link_libraries(import_bench PRIVATE tintwork_settings tintwork_warnings)
  target_compile_definitions(import_bench PRIVATE TINTWORK_CLI_PATH="$<TARGET_FILE:TintWorkCLI>")
  add_dependencies(import_bench TintWorkCLI tintwork_templates)
endif()
