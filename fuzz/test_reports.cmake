tintwork_add_fuzzer(test_reports DEPENDS tintwork_contrast nlohmann_json::nlohmann_json pugixml::pugixml
  SEEDS ${PROJECT_SOURCE_DIR}/fuzz/seeds/test_reports)
