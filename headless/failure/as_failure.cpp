#include "headless/failure/as_failure.h"

#include <filesystem>
#include <new>
#include <string>

namespace zn::headless {

Failure asFailure(const std::exception& error) {
    if (const auto* failure = dynamic_cast<const Failure*>(&error)) return *failure;
    if (dynamic_cast<const std::bad_alloc*>(&error)) {
        return {ExitStatus::kMemory, "there is not enough memory for data of this size."};
    }
    if (const auto* refusal = dynamic_cast<const std::filesystem::filesystem_error*>(&error)) {
        const std::string path = refusal->path1().empty() ? "a folder" : refusal->path1().string();
        return {ExitStatus::kOther,
                path + " cannot be used: " + refusal->code().message() + "; check its permissions and its disk."};
    }
    return {ExitStatus::kOther, error.what()};
}

} // namespace zn::headless
