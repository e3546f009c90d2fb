tintwork_add_fuzzer(colour_text DEPENDS tintwork_colour
  SEEDS ${PROJECT_SOURCE_DIR}/fuzz/seeds/colour_text)
