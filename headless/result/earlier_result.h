#pragma once

#include <filesystem>
#include <string>

namespace zn::headless {

/// What a folder that znica made as a whole holds.
enum class ResultKind { kRun, kDenoised, kSample };

/// "results of znica run", "denoised images", "simulated samples"
const char* namesOfKind(ResultKind kind);

/// Why a folder is not an earlier result of this kind, as the end of a sentence that begins with the folder; empty when
/// it is one and contains nothing else, so that all of it may be replaced.
///
/// A name alone proves nothing: masks and logs of other programs have similar names. A result says in
/// "dataset_description.json" that znica made it, and a sample has "truth.json". Every other name must be one that
/// znica writes, all with the same stem, and plugin/ may contain only the plug-in's files.
///
///   but   name of a subfolder to ignore; empty: none
///
/// Throws when the folder or its record cannot be read.
std::string whyNotAResult(const std::filesystem::path& folder, ResultKind kind, const std::string& but = {});

/// Whether a folder has a "dataset_description.json" that names znica among its generators.
bool isMadeByZnica(const std::filesystem::path& folder);

} // namespace zn::headless
