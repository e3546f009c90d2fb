#include "cli/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ostream>

#include "cli/Driver.h"

namespace tintwork {

void reserveClosedStandardStreams() noexcept {
    for (int descriptor = 0; descriptor <= 2; ++descriptor) {
        if (::fcntl(descriptor, F_GETFD) != -1 || errno != EBADF) {
            continue;
        }
        // open() takes the lowest free descriptor, which is this one.
        const int opened = ::open("/dev/null", O_RDONLY);
        if (opened >= 0 && opened != descriptor) {
            ::dup2(opened, descriptor);
            ::close(opened);
        }
    }
}

int finishOutput(std::ostream& out, std::ostream& err, int status) {
    errno = 0;
    out.flush();
    const int error = errno;
    if (out.good()) {
        return status;
    }
    err << "Error writing standard output";
    if (error != 0) {
        err << ": " << std::strerror(error);
    }
    err << '\n';
    err.flush();
    return status != exitSuccess ? status : exitFailure;
}

}  // namespace tintwork
