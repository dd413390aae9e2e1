#include "headless/denoise/course_columns.h"

#include "headless/result/result_names.h"
#include "headless/text/input_file.h"
#include "headless/text/text_lines.h"
#include "headless/text/text_table.h"

namespace zn::headless {

CourseColumns readCourses(const ResultFiles& files) {
    CourseColumns courses;
    courses.file = files[files.has(ResultFile::kTimeSeries) ? ResultFile::kTimeSeries : ResultFile::kMixing];
    const TextTable table = parseTable(readLines(courses.file), courses.file.string());
    for (int i = 0;; ++i) {
        const auto column = table.find(componentName(i));
        if (!column) break;
        courses.names.push_back(table.columns[*column]);
        std::vector<double>& values = courses.values.emplace_back();
        values.reserve(table.rows.size());
        for (std::size_t row = 0; row < table.rows.size(); ++row) values.push_back(table.number(row, *column));
    }
    if (courses.names.empty()) refuseFile(courses.file, "has no column ICA_00; create the result again.");
    return courses;
}

} // namespace zn::headless
