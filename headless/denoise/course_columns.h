#pragma once

#include "headless/result/result_files.h"

#include <string>
#include <vector>

namespace zn::headless {

/// The components' time courses as a result holds them.
struct CourseColumns {
    std::filesystem::path file;
    std::vector<std::string> names;          ///< ICA_00, ICA_01, ...
    std::vector<std::vector<double>> values; ///< [component][analysed volume]
};

/// Reads the time courses in units of the data, or the rescaled ones where an older result lacks those. Throws Failure
/// (kInput) naming the file when cells are not numbers or the columns are not ICA_00, ICA_01, ... .
CourseColumns readCourses(const ResultFiles& files);

} // namespace zn::headless
