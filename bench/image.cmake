# Image import: counting the colours of 24-megapixel bitmaps, and the whole import of a
# 24-megapixel JPEG photo (decoding included).
add_executable(image_bench ${CMAKE_CURRENT_LIST_DIR}/ImageBench.cpp)
target_link_libraries(image_bench PRIVATE tintwork_import tintwork_stb benchmark::benchmark_main tintwork_settings
                                          tintwork_warnings)
