# Seeds: documents with a page of our own and from real files, and when the shared sample
# folder is there, the real documents in it.
set(sketch_importer_seeds "${PROJECT_SOURCE_DIR}/fuzz/seeds/sketch_importer")
if(EXISTS "${TINTWORK_SHARED_DIR}/corpus/sketch")
  list(APPEND sketch_importer_seeds "${TINTWORK_SHARED_DIR}/corpus/sketch")
endif()
tintwork_add_fuzzer(sketch_importer DEPENDS tintwork_import SEEDS ${sketch_importer_seeds})
