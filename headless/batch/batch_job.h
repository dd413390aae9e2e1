#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace zn::headless {

/// The value of an environment variable; nothing when it is not set.
using Environment = std::function<std::optional<std::string>(const char* name)>;

/// The environment of this process.
std::optional<std::string> ownEnvironment(const char* name);

/// What the batch system grants the job that this process belongs to; nothing outside a job. Where jobs are not
/// confined by control groups, only these variables say so, and a job that uses more is killed or slows its neighbours
/// down.
///
/// Read from Slurm's variables: SLURM_MEM_PER_NODE, else SLURM_MEM_PER_CPU x SLURM_CPUS_ON_NODE, in MiB (0: the entire
/// node, so no limit); SLURM_CPUS_PER_TASK, else SLURM_CPUS_ON_NODE.
std::optional<std::int64_t> batchJobMemoryBytes(const Environment& environment = ownEnvironment);
std::optional<int> batchJobProcessors(const Environment& environment = ownEnvironment);

} // namespace zn::headless
