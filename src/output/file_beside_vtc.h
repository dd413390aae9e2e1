#pragma once

#include <string>

namespace zn {

/// Name of a file beside the VTC file: the VTC's name without its last four characters (assumed to be the extension,
/// not checked), then `ending`. A name of four characters or fewer is dropped entirely.
///
/// Fails for a kept stem of 256 or more characters: nrerror("file name too long").
std::string fileBesideVtc(const char* vtcFile, const char* ending);

} // namespace zn
