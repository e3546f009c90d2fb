# Seeds: small drawings of our own and, when the shared sample folder is beside the
# checkout, the real SVG files in it.
set(svg_importer_seeds "${PROJECT_SOURCE_DIR}/fuzz/seeds/svg_importer")
if(EXISTS "${TINTWORK_SHARED_DIR}/corpus/svg")
  list(APPEND svg_importer_seeds "${TINTWORK_SHARED_DIR}/corpus/svg")
endif()
tintwork_add_fuzzer(svg_importer DEPENDS tintwork_import SEEDS ${svg_importer_seeds})
