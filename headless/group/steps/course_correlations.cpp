#include "headless/group/steps/course_correlations.h"

#include "headless/group/steps/course_table.h"
#include "headless/statistics/correlation.h"
#include "headless/text/input_file.h"

#include <algorithm>
#include <cmath>

namespace zn::headless {

namespace {

constexpr double kLargestZ = 18.0; // of courses that are the same: tanh(18) is 1 in double precision

double fisherZ(const std::vector<float>& a, const std::vector<float>& b) {
    const double r = correlation(a, b, [](std::size_t) { return true; });
    return std::clamp(std::atanh(std::clamp(r, -1.0, 1.0)), -kLargestZ, kLargestZ);
}

} // namespace

std::vector<CoursePair> courseCorrelations(const std::vector<std::filesystem::path>& tables) {
    std::vector<std::vector<double>> z; // [pair][run]
    std::vector<CoursePair> pairs;
    std::size_t components = 0;
    for (const auto& table : tables) {
        const auto courses = readCourses(table);
        if (components == 0) components = courses.size();
        if (courses.size() != components) {
            refuseFile(table, "has other columns than the other runs; repeat znica group back --force.");
        }
        std::size_t pair = 0;
        for (std::size_t a = 0; a < courses.size(); ++a) {
            for (std::size_t b = a + 1; b < courses.size(); ++b, ++pair) {
                if (&table == &tables.front()) {
                    z.emplace_back();
                    pairs.push_back({static_cast<int>(a), static_cast<int>(b), 0.0, 0.0});
                }
                z[pair].push_back(fisherZ(courses[a], courses[b]));
            }
        }
    }
    for (std::size_t pair = 0; pair < pairs.size(); ++pair) {
        const auto runs = static_cast<double>(z[pair].size());
        double mean = 0.0;
        for (const double value : z[pair]) mean += value / runs;
        double squares = 0.0;
        for (const double value : z[pair]) squares += (value - mean) * (value - mean);
        pairs[pair].meanR = std::tanh(mean);
        pairs[pair].sdOfZ = std::sqrt(squares / (runs - 1.0));
    }
    return pairs;
}

} // namespace zn::headless
