#include "headless/result/bids_files.h"

#include "headless/text/text_file.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

void writeBidsFiles(const std::filesystem::path& folder, const std::string& version, const std::string& pluginName,
                    const std::string& pluginVersion) {
    using Json = nlohmann::ordered_json;
    Json generators = Json::array();
    generators.push_back({{"Name", "znica"}, {"Version", version}});
    generators.push_back({{"Name", pluginName}, {"Version", pluginVersion}});
    const Json description = {{"Name", "Spatial independent component analysis"},
                              {"BIDSVersion", "1.8.0"},
                              {"DatasetType", "derivative"},
                              {"GeneratedBy", generators}};
    writeTextFile(folder / "dataset_description.json",
                  description.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
    writeTextFile(folder / ".bidsignore", "plugin/\nlog.txt\nstatus.json\nreport.html\n*_desc-ICA_*\n");
}

} // namespace zn::headless
