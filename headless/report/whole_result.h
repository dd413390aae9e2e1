#pragma once

#include "headless/result/result_files.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

/// These check that the files of a result agree, since a page would show wrong numbers silently. They throw Failure
/// (kInput) naming the file that does not fit.

/// "..._decomposition.json" is an object with every key that the page needs, of the right kind.
nlohmann::ordered_json readRecord(const ResultFiles& files);

/// "..._metrics.json" is an object.
nlohmann::ordered_json readColumnDescriptions(const ResultFiles& files);

/// "..._metrics.tsv" has one row per map, ICA_00 first, and "..._mixing.tsv" one column per map and one row per
/// volume; so has
/// "..._design.tsv" where there is one. Cells of numbers hold a number or "n/a".
///
///   maps      volumes of the image of component maps
///   volumes   that were analysed
void requireWholeTables(const ResultFiles& files, int maps, int volumes);

} // namespace zn::headless
