#pragma once

#include <optional>

namespace zn {

/// The module of the running process that exports the host's functions. One implementation per platform.
class HostModule {
public:
    /// The loaded module named "Tesmira", else the one named "TesmiraZN" (on Windows both with ".exe", elsewhere
    /// with or without it); nothing when neither is loaded.
    static std::optional<HostModule> find();

    /// Address of an exported function by its unmangled name; null when the module does not export it.
    void* function(const char* name) const;

private:
    explicit HostModule(void* base) : base_(base) {}

    void* base_; ///< where the module is loaded
};

} // namespace zn
