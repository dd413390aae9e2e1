#pragma once

#include <filesystem>
#include <memory>
#include <string>

/// The plug-in interface as the host knows it: the order of the virtual functions (destructor, execute, initPlugin) is
/// part of the contract.
class TMPluginInterface {
public:
    virtual ~TMPluginInterface() = default;
    virtual bool execute() = 0;
    virtual bool initPlugin() = 0;
};

namespace zn::headless {

/// A loaded plug-in file.
class PluginLibrary {
public:
    /// Loads the file and looks up the seven functions. Throws Failure (kInput) that says what is wrong with the file.
    explicit PluginLibrary(const std::filesystem::path& file);

    std::string name() const { return text("getPluginName"); }
    std::string version() const { return text("getPluginVersion"); }
    std::string description() const { return text("getPluginDescription"); }
    std::string author() const { return text("getAuthor"); }
    const std::filesystem::path& file() const { return file_; }

    /// A new plug-in object. Throws Failure (kMemory) when the plug-in cannot create one.
    std::unique_ptr<TMPluginInterface> create() const;

private:
    void* function(const char* name) const;
    std::string text(const char* name) const;

    std::filesystem::path file_;
    std::unique_ptr<void, int (*)(void*)> handle_;
};

/// The plug-in that belongs to this command: in the folder of the executable, in ../lib/znica or in ../lib. Throws
/// Failure (kOther) when there is none.
std::filesystem::path findPlugin();

} // namespace zn::headless
