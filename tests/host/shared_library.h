#pragma once

#include <string>

namespace zn::test {

/// A dynamic library, loaded for as long as this object lives. One implementation per platform.
class SharedLibrary {
public:
    /// Throws std::runtime_error when the file cannot be loaded.
    explicit SharedLibrary(const std::string& file);
    ~SharedLibrary();
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;

    /// Address of what the library exports under this name; throws std::runtime_error if there is no such name.
    void* address(const char* name) const;

private:
    void* handle_;
};

} // namespace zn::test
