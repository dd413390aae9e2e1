#include "host/host_path.h"

namespace zn::test {

std::filesystem::path hostPath(const std::string& name) {
    return {name};
}

} // namespace zn::test
