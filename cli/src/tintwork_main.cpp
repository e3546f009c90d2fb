#include <iostream>
#include <string>
#include <vector>

#include "cli/Commands.h"

int main(int argc, char** argv) {
    std::vector<std::string> args(argv, argv + argc);
    const int status = tintwork::runTintwork(args, std::cout, std::cerr);
    std::cout.flush();
    return status;
}
