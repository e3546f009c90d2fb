// The error for a program fault that must stop the run: the executable prints
// "Fatal error: <message>" and exits with status 134.
#pragma once

#include <stdexcept>
#include <string>

namespace tintwork {

class FatalError : public std::runtime_error {
public:
    explicit FatalError(const std::string& message) : std::runtime_error(message) {}
};

} // namespace tintwork
