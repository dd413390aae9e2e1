#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// What is done with a component, and why.
struct Verdict {
    bool rejected = false;
    std::string label;  ///< "signal", "noise" or "unsure"; empty: none
    std::string reason; ///< the note of the label; empty: none
};

/// Verdicts from a table of labels, as the report exports it, or from a metrics table with its classification filled
/// in: components labelled "noise" are rejected, all others are kept, also those that the table does not mention.
///
///   component  classification  note
///   ICA_00     signal          default mode
///   ICA_01     noise           "rim of the brain, ""motion"""
///
///   components   names of the components, ICA_00 first
///
/// Throws Failure (kInput) naming the file for a table without these columns, a component that the result does not have
/// or that occurs twice, and a label that is none of signal, noise, unsure and n/a.
std::vector<Verdict> readVerdicts(const std::filesystem::path& labels, const std::vector<std::string>& components);

/// Verdicts from a list of rejected components: numbers as the report shows them, from 1, ranges of these ("3-5"), or
/// names. Throws Failure (kInput) for one that the result does not have.
std::vector<Verdict> verdictsFor(const std::vector<std::string>& rejected, const std::vector<std::string>& components);

} // namespace zn::headless
