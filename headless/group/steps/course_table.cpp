#include "headless/group/steps/course_table.h"

#include "headless/text/text_lines.h"
#include "headless/text/text_table.h"

namespace zn::headless {

std::vector<std::vector<float>> readCourses(const std::filesystem::path& file) {
    const TextTable table = parseTable(readLines(file), file.string());
    std::vector<std::vector<float>> courses(table.columns.size());
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        for (std::size_t c = 0; c < courses.size(); ++c) {
            courses[c].push_back(static_cast<float>(table.number(row, c)));
        }
    }
    return courses;
}

} // namespace zn::headless
