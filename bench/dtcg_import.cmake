# Import and build through the tintwork command: generated standard Design Tokens files
# of 1,000, 10,000 and 100,000 tokens with references, beside dialect files of as many
# colours, each built to CSS. Prints wall time and peak memory of each run.
if(TARGET tintwork)
  add_executable(dtcg_import_bench ${CMAKE_CURRENT_LIST_DIR}/DtcgImportBench.cpp)
  target_link_libraries(dtcg_import_bench PRIVATE tintwork_settings tintwork_warnings)
  target_compile_definitions(dtcg_import_bench PRIVATE TINTWORK_COMMAND_PATH="$<TARGET_FILE:tintwork>")
  add_dependencies(dtcg_import_bench tintwork tintwork_templates)
endif()
