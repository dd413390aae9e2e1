#include "headless/result/partial_result.h"

#include "headless/result/result_folder.h"

#include <fstream>

#include <nlohmann/json.hpp>

namespace zn::headless {

std::string markPartial(const char* how, int exitStatus) {
    const std::filesystem::path folder = ResultFolder::left();
    if (folder.empty()) return "";
    const nlohmann::ordered_json status = {{"status", how}, {"exit_status", exitStatus}, {"partial", true}};
    std::ofstream(folder / "status.json") << status.dump(2) << '\n'; // a full disk is the user's trouble already
    return " The partial files are in " + folder.string() + ".";
}

} // namespace zn::headless
