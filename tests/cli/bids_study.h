// A small simulated dataset for `znica bids`.
#pragma once

#include "cli/command.h"
#include "files.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zn::test {

inline std::string lastLine(const std::string& text) {
    const std::size_t end = text.find_last_not_of('\n');
    const std::size_t start = text.rfind('\n', end);
    return text.substr(start == std::string::npos ? 0 : start + 1, end - start);
}

/// Two runs, sub-01 and sub-02, of one task, and the command that analyses them.
class Bids : public testing::Test {
protected:
    static void SetUpTestSuite() {
        samples = std::make_unique<TemporaryFolder>();
        for (const char* seed : {"1", "2"}) {
            const auto made = znica({"simulate", "--size", "tiny", "--seed", seed, "--out", *samples / seed});
            ASSERT_EQ(made.status, 0) << made.err;
        }
    }
    static void TearDownTestSuite() { samples.reset(); }

    void SetUp() override {
        addImage("sub-01", "1");
        addImage("sub-02", "2");
        writeFile(data / "task-rest_bold.json", R"({"RepetitionTime": 2})");
    }

    std::filesystem::path imageOf(const std::string& subject) const {
        return data / subject / "func" / (subject + "_task-rest_bold.nii.gz");
    }
    void addImage(const std::string& subject, const char* sample) const {
        std::filesystem::create_directories(data / subject / "func");
        std::filesystem::copy_file(*samples / sample / "sub-sim_task-blocks_bold.nii.gz", imageOf(subject),
                                   std::filesystem::copy_options::overwrite_existing);
    }
    CommandResult analyse(std::vector<std::string> options = {}, const Surroundings& surroundings = {}) const {
        options.insert(options.begin(), {"bids", data, out, "participant", "--components", "3", "--seed", "1"});
        return znica(options, surroundings);
    }
    nlohmann::json record(const std::string& run) const {
        return nlohmann::json::parse(textOf(out / "logs" / (run + ".json")));
    }
    std::string components(const std::string& subject) const {
        return textOf(out / subject / "func" / (subject + "_task-rest_desc-ICA_components.nii.gz"));
    }

    static inline std::unique_ptr<TemporaryFolder> samples;
    TemporaryFolder folder;
    const std::filesystem::path data = folder / "data";
    const std::filesystem::path out = folder / "out";
};

} // namespace zn::test
