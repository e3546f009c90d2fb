# Seeds: a byte choosing style sheet (even) or HTML (odd), then the text; ours only, since
# the shared sample files lack that first byte.
tintwork_add_fuzzer(css_importer DEPENDS tintwork_import SEEDS "${PROJECT_SOURCE_DIR}/fuzz/seeds/css_importer")
