// The names that the plug-in looks up in its host, in order: every call of dlsym comes here first (--wrap).
#include "host/scratch_directory.h"
#include "host/scripted_host.h"
#include "plugin/run_driver.h"

#include <string>
#include <vector>

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

std::vector<std::string> lookedUp;

} // namespace

extern "C" void* __real_dlsym(void* handle, const char* name) noexcept;
extern "C" void* __wrap_dlsym(void* handle, const char* name) noexcept {
    if (std::string(name).starts_with("zn")) lookedUp.emplace_back(name);
    return __real_dlsym(handle, name);
}

namespace zn::test {
namespace {

TEST(LookupOrder, IsThatOfTheListsAndEndsWithTheOptionalFunction) {
    const std::vector<std::string> expected = {"znGetVersionOfTesmiraZN", // whether this is the host at all
#define ZN(result, name, parameters) #name,
#define ZN_UNUSED(name) #name,
#include "host/host_functions.def"
#include "host/host_matrix_products.def"
#undef ZN_UNUSED
#undef ZN
                                               "znSeparateWhitenedData"};
    scripted() = ScriptedHost{};
    lookedUp.clear();
    ASSERT_TRUE(initialisePlugin());
    EXPECT_EQ(lookedUp, expected);
}

} // namespace
} // namespace zn::test
