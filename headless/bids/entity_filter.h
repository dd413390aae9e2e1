#pragma once

#include "headless/bids/bids_name.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace zn::headless {

/// Which labels the images may have, entity by entity; an entity that is not listed may have any label or be absent.
class EntityFilter {
public:
    /// The label must be one of these. Labels of "run" are compared as numbers: 1 and 01 are the same.
    void allow(const std::string& entity, std::vector<std::string> labels);

    /// Adds the conditions of the query "bold" in a filter file such as fMRIPrep reads:
    ///
    ///   {"bold": {"task": "rest", "session": ["01", "02"], "acquisition": null, "run": "*"}}
    ///
    /// null: the entity is absent; "*": it has any label. The keys are names of entities, long or short, and "suffix",
    /// "extension" and "datatype". Other queries of the file are about other images and do not matter. Throws Failure
    /// (kInput) when the file cannot be read or says something else.
    void addFile(const std::filesystem::path& file);

    bool passes(const BidsName& name) const;

private:
    struct Condition {
        bool absent = false;             ///< the entity may be missing
        bool any = false;                ///< it may have any label
        std::vector<std::string> labels; ///< it may have one of these
    };
    bool holds(const std::string& entity, const Condition& condition, const BidsName& name) const;

    std::map<std::string, std::vector<Condition>> conditions_; // by the short name of the entity; all must hold
};

/// Whether two labels of an entity are the same; those of "run" count as numbers.
bool sameLabel(std::string_view entity, std::string_view a, std::string_view b);

} // namespace zn::headless
