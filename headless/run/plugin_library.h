#pragma once

#include <filesystem>
#include <memory>
#include <string>

/// The interface that the host knows of a plug-in: the order of the virtual functions is the contract (destructor,
/// execute, initPlugin).
class TMPluginInterface {
public:
    virtual ~TMPluginInterface() = default;
    virtual bool execute() = 0;
    virtual bool initPlugin() = 0;
};

namespace zn::headless {

/// A loaded plug-in file and its one plug-in object.
class PluginLibrary {
public:
    /// Loads the file and looks up the seven functions. Throws Failure (kInput) saying what is wrong with the file.
    explicit PluginLibrary(const std::filesystem::path& file);

    std::string name() const { return text("getPluginName"); }
    std::string version() const { return text("getPluginVersion"); }
    std::string description() const { return text("getPluginDescription"); }
    std::string author() const { return text("getAuthor"); }
    const std::filesystem::path& file() const { return file_; }

    /// A new plug-in object. Throws Failure (kMemory) when the plug-in cannot make one.
    std::unique_ptr<TMPluginInterface> create() const;

private:
    void* function(const char* name) const;
    std::string text(const char* name) const;

    std::filesystem::path file_;
    std::unique_ptr<void, int (*)(void*)> handle_;
};

/// The plug-in that belongs to this command: beside the executable, in ../lib/znica or in ../lib.
/// Throws Failure (kOther) when there is none.
std::filesystem::path findPlugin();

} // namespace zn::headless
