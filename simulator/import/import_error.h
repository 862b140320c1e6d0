// What an import refuses.

#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace sim {

// "file:line: expected ..." for a file, or what else stands in the way of the import.
class ImportError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    ImportError(const std::string& file, std::size_t line, const std::string& expected)
        : std::runtime_error(file + ":" + std::to_string(line) + ": expected " + expected) {}
};

}  // namespace sim
