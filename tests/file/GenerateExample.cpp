// Writes the example document: generate_example_document <path to Colors.tintwork>.

#include <cstdio>
#include <exception>

#include "ExampleProject.h"
#include "file/OchreColorFileWriter.h"
#include "model/FileIO.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: generate_example_document <output.tintwork>\n");
        return 2;
    }
    try {
        const auto project = tintwork::example::makeExampleProject();
        tintwork::writeFileBytes(argv[1], tintwork::OchreColorFileWriter().write(*project));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
