# Seeds: small token files of our own, the strict-mode test files and, when the shared
# sample folder is beside the checkout, the real token files in it.
set(dtcg_importer_seeds
  "${PROJECT_SOURCE_DIR}/fuzz/seeds/dtcg_importer"
  "${PROJECT_SOURCE_DIR}/tests/import/data/dtcg/strict/valid"
  "${PROJECT_SOURCE_DIR}/tests/import/data/dtcg/strict/invalid")
if(EXISTS "${PROJECT_SOURCE_DIR}/../shared/corpus/json/dtcg")
  list(APPEND dtcg_importer_seeds "${PROJECT_SOURCE_DIR}/../shared/corpus/json/dtcg")
endif()
tintwork_add_fuzzer(dtcg_importer DEPENDS tintwork_import SEEDS ${dtcg_importer_seeds})
