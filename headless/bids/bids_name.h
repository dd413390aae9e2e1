#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zn::headless {

/// A file name as BIDS composes it, "sub-01_task-rest_run-2_bold.nii.gz": entities, a suffix, an extension.
struct BidsName {
    std::vector<std::pair<std::string, std::string>> entities; ///< ("sub", "01"), ... in the order of the name
    std::string suffix;                                        ///< "bold"
    std::string extension;                                     ///< ".nii.gz"

    /// The label of an entity; nothing when the name does not have it.
    std::optional<std::string> label(std::string_view entity) const;

    /// The same name without some entities.
    BidsName without(const std::vector<std::string_view>& left) const;

    /// "sub-01_task-rest_run-2"
    std::string entityText() const;
};

/// Nothing unless the name consists of entities (letters, '-', letters and digits or '+'), each at most once, a suffix
/// of letters and digits, and an extension, which begins at the first dot.
std::optional<BidsName> parseBidsName(std::string_view name);

/// Whether every entity of `general` is in `particular` with the same label: a file named `general` applies to it.
bool appliesTo(const BidsName& general, const BidsName& particular);

} // namespace zn::headless
