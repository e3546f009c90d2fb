tintwork_add_fuzzer(ochre_document DEPENDS tintwork_import SEEDS "${PROJECT_SOURCE_DIR}/fuzz/seeds/ochre_document")
