#include "attack/host/run_record.h"

#include "host/scratch_directory.h"

#include <regex>

namespace zn::test {

namespace {

void add(std::string& record, const std::vector<float>& values) {
    record.append(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(float));
}

} // namespace

std::string recordOfMaps(const ScriptedHost& host) {
    std::string record;
    for (const auto& map : host.maps) {
        record += map.name;
        add(record, map.voxels);
        add(record, map.timeCourse);
        add(record, map.parameters);
    }
    for (const auto& name : host.setNames) record += name;
    for (const auto& name : host.parameterNames) record += name;
    return record;
}

std::string recordOfRun(const ScriptedHost& host) {
    std::string record = recordOfMaps(host);
    static const std::regex seconds("elapsed time: [0-9]+ secs");
    for (const auto& line : host.log()) record += std::regex_replace(line, seconds, "elapsed time") + '\n';
    for (const char* file : {"ICA.vox", "Covariance.txt", "ParamsMatrix.txt", "run1.eig", "run1_ICA.rtc"}) {
        record += contentOf(file);
    }
    return record;
}

} // namespace zn::test
