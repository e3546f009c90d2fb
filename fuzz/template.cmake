tintwork_add_fuzzer(template DEPENDS tintwork_template SEEDS ${PROJECT_SOURCE_DIR}/fuzz/seeds/template)
