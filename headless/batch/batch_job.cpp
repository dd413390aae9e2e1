#include "headless/batch/batch_job.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace zn::headless {

namespace {

constexpr std::int64_t kMebibyte = 1048576;
constexpr std::int64_t kLargest = std::int64_t{1} << 40; // of any of these numbers, so that no product overflows

// A whole number above 0.
std::optional<std::int64_t> countIn(const Environment& environment, const char* name) {
    const auto text = environment(name);
    if (!text) return std::nullopt;
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), number);
    if (error != std::errc() || end != text->data() + text->size() || number < 1 || number > kLargest) return {};
    return number;
}

bool isInJob(const Environment& environment) {
    return environment("SLURM_JOB_ID").has_value();
}

} // namespace

std::optional<std::string> ownEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::optional<std::string>(value) : std::nullopt;
}

std::optional<std::int64_t> batchJobMemoryBytes(const Environment& environment) {
    if (!isInJob(environment)) return std::nullopt;
    if (const auto node = countIn(environment, "SLURM_MEM_PER_NODE")) return *node * kMebibyte;
    const auto each = countIn(environment, "SLURM_MEM_PER_CPU");
    if (!each || *each > (std::int64_t{1} << 30)) return std::nullopt;
    const std::int64_t processors = countIn(environment, "SLURM_CPUS_ON_NODE").value_or(1);
    return *each * std::min(processors, std::int64_t{4096}) * kMebibyte;
}

std::optional<int> batchJobProcessors(const Environment& environment) {
    if (!isInJob(environment)) return std::nullopt;
    for (const char* name : {"SLURM_CPUS_PER_TASK", "SLURM_CPUS_ON_NODE"}) {
        const auto count = countIn(environment, name);
        if (count && *count <= 4096) return static_cast<int>(*count);
    }
    return std::nullopt;
}

} // namespace zn::headless
