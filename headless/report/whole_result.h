#pragma once

#include "headless/result/result_files.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

/// These functions check that the files of a result agree, since otherwise a page would silently show wrong numbers.
/// They throw Failure (kInput) naming the file at fault.

/// "..._decomposition.json" is an object with every key that the page needs, of the right type.
nlohmann::ordered_json readRecord(const ResultFiles& files);

/// "..._metrics.json" is an object.
nlohmann::ordered_json readColumnDescriptions(const ResultFiles& files);

/// "..._metrics.tsv" has one row per map, ICA_00 first; "..._mixing.tsv" has one column per map and one row per volume;
/// "..._design.tsv", if present, has one row per volume. Numeric cells hold a number or "n/a".
///
///   maps      number of volumes of the component maps image
///   volumes   number of volumes analysed
void requireCompleteTables(const ResultFiles& files, int maps, int volumes);

} // namespace zn::headless
