# Colour text: printing in every format and reading back through the fallback list.
add_executable(colour_bench ${CMAKE_CURRENT_LIST_DIR}/ColourBench.cpp)
target_link_libraries(colour_bench PRIVATE tintwork_colour benchmark::benchmark_main tintwork_settings
                                           tintwork_warnings)
