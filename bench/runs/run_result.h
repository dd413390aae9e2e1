#pragma once

#include <string>
#include <utility>
#include <vector>

namespace zn::bench {

/// The measurements of one run of a program; the comparison reads them from its standard output.
class RunResult {
public:
    void add(const char* name, double value) { values_.emplace_back(name, value); }

    /// One line of JSON: an object of numbers.
    void print() const;

private:
    std::vector<std::pair<std::string, double>> values_;
};

/// Writes maps, K x V floats, row-major. False when the file cannot be written.
bool writeMaps(const std::string& fileName, const std::vector<const float*>& maps, int voxels);

} // namespace zn::bench
