#include <iostream>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/StandardStreams.h"

int main(int argc, char** argv) {
    tintwork::reserveClosedStandardStreams();
    std::vector<std::string> args(argv, argv + argc);
    const int status = tintwork::runTintwork(args, std::cout, std::cerr);
    return tintwork::finishOutput(std::cout, std::cerr, status);
}
