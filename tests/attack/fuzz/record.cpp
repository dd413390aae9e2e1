// Fuzz target: the two JSON files of a result, as the report reads them.

#include "attack/fuzz/input.h"

#include "headless/report/whole_result.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zn::headless;
    const std::string text = zn::test::textInput(data, size);
    const auto file = zn::test::inputFile("record/x_desc-ICA_decomposition.json", text);
    zn::test::inputFile("record/x_desc-ICA_metrics.json", text);
    const ResultFiles files(file.parent_path(), "x");
    const auto pack = [](const nlohmann::ordered_json& json) {
        return json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    };
    zn::test::mayRefuse([&] { pack(readRecord(files)); });
    zn::test::mayRefuse([&] { pack(readColumnDescriptions(files)); });
    return 0;
}
