#include "headless/result/bids_files.h"

#include "headless/text/text_file.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

void writeBidsFiles(const ResultFiles& files, const std::string& version, const std::string& pluginName,
                    const std::string& pluginVersion) {
    using Json = nlohmann::ordered_json;
    Json generators = Json::array();
    generators.push_back({{"Name", "znica"}, {"Version", version}});
    generators.push_back({{"Name", pluginName}, {"Version", pluginVersion}});
    const Json description = {{"Name", "Spatial independent component analysis"},
                              {"BIDSVersion", "1.8.0"},
                              {"DatasetType", "derivative"},
                              {"GeneratedBy", generators}};
    writeTextFile(files[ResultFile::kDatasetDescription],
                  description.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
    writeTextFile(files[ResultFile::kBidsIgnore],
                  ignoredNames({ResultPlace::kRun, ResultPlace::kRunAndSample, ResultPlace::kRunAndDenoised}));
}

} // namespace zn::headless
