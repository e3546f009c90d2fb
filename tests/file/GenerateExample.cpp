// Writes the example documents:
// generate_example_document <path to Colors.tintwork> [<path to Contrast.tintwork>].

#include <cstdio>
#include <exception>

#include "ExampleProject.h"
#include "file/OchreColorFileWriter.h"
#include "model/FileIO.h"

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: generate_example_document <Colors.tintwork> [<Contrast.tintwork>]\n");
        return 2;
    }
    try {
        const auto project = tintwork::example::makeExampleProject();
        tintwork::writeFileBytes(argv[1], tintwork::OchreColorFileWriter().write(*project));
        if (argc == 3) {
            const auto contrast = tintwork::example::makeContrastExampleProject();
            tintwork::writeFileBytes(argv[2], tintwork::OchreColorFileWriter().write(*contrast));
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
