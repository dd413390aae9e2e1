#include "host/host_path.h"

#include <windows.h>

namespace zn::test {

std::filesystem::path hostPath(const std::string& name) {
    const int length = static_cast<int>(name.size());
    std::wstring wide(name.size(), L'\0'); // no code page needs more than one wide character per byte
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, name.data(), length, wide.data(), length)));
    return {wide};
}

} // namespace zn::test
