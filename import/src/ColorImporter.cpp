#include "import/ColorImporter.h"

#include <iostream>

namespace tintwork {

void ColorImporter::printDiagnostic(std::string_view line) const {
    if (diagnostics) {
        diagnostics(line);
    } else {
        std::cout << line << '\n';
    }
}

}  // namespace tintwork
