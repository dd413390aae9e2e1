#pragma once

#include "host/scratch_directory.h"

#include <string>

namespace zn::test {

/// A copy of the plug-in file under its own name, loaded, with one object made by it, for as long as this object lives.
class LoadedPlugin {
public:
    /// The copy is made in the current directory. `flags` are those of dlopen besides RTLD_NOW.
    LoadedPlugin(const std::string& name, int flags);
    ~LoadedPlugin();
    LoadedPlugin(const LoadedPlugin&) = delete;
    LoadedPlugin& operator=(const LoadedPlugin&) = delete;

    bool initPlugin();
    bool execute();

    /// Whether the dynamic linker still holds a file that was loaded under this name.
    static bool isLoaded(const std::string& name);

private:
    void* library_;
    void* object_;
};

} // namespace zn::test
