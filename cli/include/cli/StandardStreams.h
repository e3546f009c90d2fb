#pragma once
// The process's standard streams, shared by every executable of the command line.

#include <iosfwd>

namespace tintwork {

// Keeps descriptors 0, 1 and 2 taken. One the caller closed gets a read-only
// /dev/null, so writes to it still fail, but no file the run opens can land on it
// and receive console lines. Call first thing in main.
void reserveClosedStandardStreams() noexcept;

// Flushes `out` and returns the run's final status. When anything written to `out`
// was lost (a full disk, a closed descriptor), says so on `err` and turns a success
// into exitFailure; a status that is already non-zero stays.
int finishOutput(std::ostream& out, std::ostream& err, int status);

}  // namespace tintwork
