// What a job is granted, from the variables that Slurm sets in it.
#include "headless/batch/batch_job.h"

#include <map>

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

Environment with(std::map<std::string, std::string> variables) {
    return [variables = std::move(variables)](const char* name) -> std::optional<std::string> {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    };
}

TEST(BatchJob, LimitsNothingOutsideAJob) {
    const auto environment = with({{"SLURM_MEM_PER_NODE", "60"}, {"SLURM_CPUS_PER_TASK", "1"}});
    EXPECT_EQ(batchJobMemoryBytes(environment), std::nullopt);
    EXPECT_EQ(batchJobProcessors(environment), std::nullopt);
}

TEST(BatchJob, MayHaveMemoryPerNodeInMebibytes) {
    EXPECT_EQ(batchJobMemoryBytes(with({{"SLURM_JOB_ID", "7"}, {"SLURM_MEM_PER_NODE", "60"}})), 60 * 1048576);
}

TEST(BatchJob, MayHaveMemoryPerProcessor) {
    const auto environment = with({{"SLURM_JOB_ID", "7"}, {"SLURM_MEM_PER_CPU", "500"}, {"SLURM_CPUS_ON_NODE", "3"}});
    EXPECT_EQ(batchJobMemoryBytes(environment), std::int64_t{1500} * 1048576);
}

TEST(BatchJob, MayHaveTheMemoryOfTheEntireNode) {
    EXPECT_EQ(batchJobMemoryBytes(with({{"SLURM_JOB_ID", "7"}, {"SLURM_MEM_PER_NODE", "0"}})), std::nullopt);
}

TEST(BatchJob, HasTheProcessorsOfATaskElseThoseOnTheNode) {
    EXPECT_EQ(
        batchJobProcessors(with({{"SLURM_JOB_ID", "7"}, {"SLURM_CPUS_PER_TASK", "2"}, {"SLURM_CPUS_ON_NODE", "8"}})),
        2);
    EXPECT_EQ(batchJobProcessors(with({{"SLURM_JOB_ID", "7"}, {"SLURM_CPUS_ON_NODE", "8"}})), 8);
    EXPECT_EQ(batchJobProcessors(with({{"SLURM_JOB_ID", "7"}})), std::nullopt);
}

TEST(BatchJob, IgnoresWhatIsNotANumber) {
    for (const char* text : {"", "many", "-1", "2x", "99999999999999999999"}) {
        const auto environment =
            with({{"SLURM_JOB_ID", "7"}, {"SLURM_MEM_PER_NODE", text}, {"SLURM_CPUS_PER_TASK", text}});
        EXPECT_EQ(batchJobMemoryBytes(environment), std::nullopt) << text;
        EXPECT_EQ(batchJobProcessors(environment), std::nullopt) << text;
    }
}

} // namespace

} // namespace zn::test
