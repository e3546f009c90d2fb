# Template rendering: a CSS-like template with a custom colour tag over 10,000,
# 100,000 and 1,000,000 records. Prints parse and render time and peak memory.
add_executable(template_bench ${CMAKE_CURRENT_LIST_DIR}/TemplateBench.cpp)
target_link_libraries(template_bench PRIVATE tintwork_template tintwork_settings tintwork_warnings)
