tintwork_add_fuzzer(document_reader DEPENDS tintwork_file
  SEEDS ${PROJECT_SOURCE_DIR}/fuzz/seeds/document_reader
        ${PROJECT_SOURCE_DIR}/examples/Colors.tintwork
        ${PROJECT_SOURCE_DIR}/tests/file/data)
