# Seeds: schema sections followed by messages, among them a real document's.
tintwork_add_fuzzer(kiwi_decoder DEPENDS tintwork_import SEEDS "${PROJECT_SOURCE_DIR}/fuzz/seeds/kiwi_decoder")
