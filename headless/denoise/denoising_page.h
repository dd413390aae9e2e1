#pragma once

#include "headless/denoise/denoising.h"
#include "headless/denoise/quality.h"
#include "headless/report/report_page.h"

namespace zn::headless {

/// The report of the components with the page "Denoising" in front, not yet written: blocks "denoising" (JSON),
/// "carpet-before" and "carpet-after" (one byte per voxel and volume: -3 to 3 standard deviations as 0 to 255), and
/// "evidence-0" and so on (maps, packed as those of the components). Throws Failure as makeReport().
ReportPage denoisingPage(const Denoising& run, const Quality& quality);

} // namespace zn::headless
