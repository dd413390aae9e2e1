#include "host/host_path.h"

namespace zn::testing {

std::filesystem::path hostPath(const std::string& name) {
    return {name};
}

} // namespace zn::testing
