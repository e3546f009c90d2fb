#include <iostream>
#include <string>
#include <vector>

#include "cli/Driver.h"
#include "cli/StandardStreams.h"

int main(int argc, char** argv) {
    tintwork::reserveClosedStandardStreams();
    std::vector<std::string> args(argv, argv + argc);
    const int status = tintwork::runDriver(args, std::cout, std::cerr);
    return tintwork::finishOutput(std::cout, std::cerr, status);
}
