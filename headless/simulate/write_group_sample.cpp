#include "headless/simulate/write_group_sample.h"

#include "headless/simulate/write_sample.h"
#include "headless/text/text_file.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

void writeSubject(const fs::path& folder, const std::string& name, const Sample& sample, const nifti_image& grid) {
    const fs::path func = folder / name / "func";
    fs::create_directories(func);
    const ResultFiles files(func, name + "_task-rest");
    writeMeasurement(files[ResultFile::kSampleImage], sample, grid);
    writeTextFile(files[ResultFile::kSampleSidecar],
                  Json{{"RepetitionTime", sample.secondsPerVolume}, {"TaskName", "rest"}}.dump(2) + "\n");
    writeTimeCourses(files[ResultFile::kTrueMixing], sample, false);
}

std::string amplitudeTable(const GroupSample& group) {
    std::string text = "participant_id";
    for (const Source& source : group.shared.sources) text += '\t' + source.timeCourse.kind;
    text += '\n';
    for (int subject = 0; subject < group.subjects(); ++subject) {
        text += subjectName(subject, group.subjects());
        for (const double strength : group.strengths[static_cast<std::size_t>(subject)]) {
            text += '\t' + cellText(static_cast<float>(strength));
        }
        text += '\n';
    }
    return text;
}

} // namespace

void writeGroupSample(const ResultFiles& files, const GroupSample& group, const SimulateOptions& options) {
    const Sample& shared = group.shared;
    const auto grid = newGrid(shared.brain.size, shared.brain.edge);
    Json names = Json::array();
    for (int subject = 0; subject < group.subjects(); ++subject) {
        names.push_back(subjectName(subject, group.subjects()));
        writeSubject(files.folder(), names.back(), subjectSample(group, subject), *grid);
    }
    writeMask(files[ResultFile::kMask], shared.brain, *grid);
    writeSourceMaps(files[ResultFile::kTrueMaps], shared, *grid);
    writeTextFile(files[ResultFile::kTrueAmplitudes], amplitudeTable(group));
    const Json description = {
        {"Name", "Simulated study"}, {"BIDSVersion", "1.8.0"}, {"GeneratedBy", Json::array({{{"Name", "znica"}}})}};
    writeTextFile(files[ResultFile::kDatasetDescription], description.dump(2) + "\n");
    Json truth = truthOf(options, shared);
    truth["subjects"] = names;
    writeTextFile(files[ResultFile::kTruth], truth.dump(2) + "\n");
}

} // namespace zn::headless
