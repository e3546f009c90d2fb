# Contrast tests over a large document: 1,000 foreground and 1,000 background colours.
add_executable(contrast_bench ${CMAKE_CURRENT_LIST_DIR}/ContrastBench.cpp)
target_link_libraries(contrast_bench PRIVATE tintwork_contrast tintwork_settings tintwork_warnings)
