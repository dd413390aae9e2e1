#pragma once

#include "headless/failure/failure.h"

#include <exception>

namespace zn::headless {

/// Any exception that ends a command, with an exit status and a sentence for the user. Those of the standard library
/// name neither the file nor what to do about it: memory that is exhausted becomes kMemory, a file system that refuses
/// something becomes kOther with the path.
Failure asFailure(const std::exception& error);

} // namespace zn::headless
