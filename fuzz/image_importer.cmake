# Seeds: small images of each decoded format and, when the shared sample folder is beside the
# checkout, the real images in it.
set(image_importer_seeds "${PROJECT_SOURCE_DIR}/fuzz/seeds/image_importer")
if(EXISTS "${TINTWORK_SHARED_DIR}/corpus/images")
  list(APPEND image_importer_seeds "${TINTWORK_SHARED_DIR}/corpus/images")
endif()
tintwork_add_fuzzer(image_importer DEPENDS tintwork_import SEEDS ${image_importer_seeds})
