# Two interface targets that every target of ours links: warnings and settings.
add_library(tintwork_warnings INTERFACE)
target_compile_options(tintwork_warnings INTERFACE -Wall -Wextra -Wshadow -Wnon-virtual-dtor
  -Wold-style-cast -Woverloaded-virtual -Wimplicit-fallthrough)
if(TINTWORK_WERROR)
  target_compile_options(tintwork_warnings INTERFACE -Werror)
endif()

add_library(tintwork_settings INTERFACE)
target_compile_features(tintwork_settings INTERFACE cxx_std_20)
target_compile_definitions(tintwork_settings INTERFACE $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)
if(TINTWORK_SANITIZE)
  target_compile_options(tintwork_settings INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(tintwork_settings INTERFACE -fsanitize=address,undefined)
endif()
if(TINTWORK_FUZZ)
  target_compile_options(tintwork_settings INTERFACE -fsanitize=fuzzer-no-link,address,undefined)
  target_link_options(tintwork_settings INTERFACE -fsanitize=address,undefined)
endif()

# tintwork_add_library(<name> SOURCES ... DEPENDS ...): a static library for one
# subsystem, exporting only its include/ folder.
function(tintwork_add_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS;PRIVATE_DEPENDS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}/include"
                                     PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}/src")
  target_link_libraries(${name} PUBLIC ${ARG_DEPENDS} tintwork_settings
                                PRIVATE ${ARG_PRIVATE_DEPENDS} tintwork_warnings)
endfunction()

# tintwork_add_test(<name> SOURCES ... DEPENDS ...): one GoogleTest executable.
function(tintwork_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_DEPENDS} GTest::gtest GTest::gmock GTest::gtest_main
                                        tintwork_settings tintwork_warnings)
  target_compile_definitions(${name} PRIVATE
    TINTWORK_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
    TINTWORK_BINARY_DIR="${PROJECT_BINARY_DIR}"
    TINTWORK_SHARED_DIR="${TINTWORK_SHARED_DIR}")
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
    PROPERTIES SKIP_RETURN_CODE 77 ENVIRONMENT "TINTWORK_SOURCE_DIR=${PROJECT_SOURCE_DIR}")
endfunction()
