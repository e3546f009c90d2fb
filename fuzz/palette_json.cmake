# Seeds: our own palette files and, when the shared sample folder is beside the checkout, the
# real palette files in it.
set(palette_json_seeds "${PROJECT_SOURCE_DIR}/fuzz/seeds/palette_json")
foreach(name material-colors.json open-color.json generic-radix-colors-p3.json)
  if(EXISTS "${TINTWORK_SHARED_DIR}/corpus/json/${name}")
    list(APPEND palette_json_seeds "${TINTWORK_SHARED_DIR}/corpus/json/${name}")
  endif()
endforeach()
tintwork_add_fuzzer(palette_json DEPENDS tintwork_import SEEDS ${palette_json_seeds})
