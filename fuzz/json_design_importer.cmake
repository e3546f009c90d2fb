# Seeds: our own token files and, when the shared sample folder is there, the real
# Design Tokens files in it.
set(json_design_importer_seeds "${PROJECT_SOURCE_DIR}/fuzz/seeds/json_design_importer")
if(EXISTS "${TINTWORK_SHARED_DIR}/corpus/json")
  list(APPEND json_design_importer_seeds "${TINTWORK_SHARED_DIR}/corpus/json")
endif()
tintwork_add_fuzzer(json_design_importer DEPENDS tintwork_import SEEDS ${json_design_importer_seeds})
