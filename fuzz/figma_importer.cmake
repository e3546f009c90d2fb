# Seeds: canvases of our own and a real one, and when the shared sample folder is there, the real documents in it.
set(figma_importer_seeds "${PROJECT_SOURCE_DIR}/fuzz/seeds/figma_importer")
if(EXISTS "${TINTWORK_SHARED_DIR}/corpus/figma")
  list(APPEND figma_importer_seeds "${TINTWORK_SHARED_DIR}/corpus/figma")
endif()
tintwork_add_fuzzer(figma_importer DEPENDS tintwork_import SEEDS ${figma_importer_seeds})
