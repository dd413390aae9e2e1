#pragma once

#include "headless/report/run_files.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

/// These hold the parts of a result against each other, since a page would show wrong numbers without a word. They
/// throw Failure (kInput) naming the file that does not fit.

/// "..._decomposition.json" is an object with every key that the page needs, of the right kind.
nlohmann::ordered_json readRecord(const RunFiles& files);

/// "..._metrics.json" is an object.
nlohmann::ordered_json readColumnDescriptions(const RunFiles& files);

/// "..._metrics.tsv" has a row a map, ICA_00 first, and "..._mixing.tsv" a column a map and a row a volume; so has
/// "..._design.tsv" where there is one. Cells of numbers hold a number or "n/a".
///
///   maps      volumes of the image of component maps
///   volumes   that were analysed
void requireWholeTables(const RunFiles& files, int maps, int volumes);

} // namespace zn::headless
