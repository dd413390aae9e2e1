#pragma once

namespace zn::test {

/// The plug-in file as a host uses it: loaded once, then used through its exported functions and the object that it
/// creates.
class PluginUnderTest {
public:
    PluginUnderTest();
    ~PluginUnderTest();
    PluginUnderTest(const PluginUnderTest&) = delete;
    PluginUnderTest& operator=(const PluginUnderTest&) = delete;

    /// The text that one of the exported functions without arguments returns.
    const char* text(const char* function);

    bool initPlugin();
    bool execute();

private:
    void* object_;
};

} // namespace zn::test
