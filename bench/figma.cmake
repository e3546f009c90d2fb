# Figma import in process: a generated document of 100,000 nodes (a fill and a background
# each, from a palette of 1,000 colours), imported in a child process whose wall time and
# peak memory are printed.
add_executable(figma_bench ${CMAKE_CURRENT_LIST_DIR}/FigmaBench.cpp)
target_include_directories(figma_bench PRIVATE "${PROJECT_SOURCE_DIR}/tests/import")
target_link_libraries(figma_bench PRIVATE tintwork_import PkgConfig::LIBZIP ZLIB::ZLIB PkgConfig::ZSTD
                                          tintwork_settings tintwork_warnings)
