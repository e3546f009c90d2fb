# Seeds: our own token files and, when the shared sample folder is beside the
# checkout, the real Design Tokens files in it.
set(json_design_importer_seeds "${PROJECT_SOURCE_DIR}/fuzz/seeds/json_design_importer")
if(EXISTS "${PROJECT_SOURCE_DIR}/../shared/corpus/json")
  list(APPEND json_design_importer_seeds "${PROJECT_SOURCE_DIR}/../shared/corpus/json")
endif()
tintwork_add_fuzzer(json_design_importer DEPENDS tintwork_import SEEDS ${json_design_importer_seeds})
