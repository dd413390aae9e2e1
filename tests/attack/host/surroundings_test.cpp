// A host that leaves the plug-in no way to write its files: the run is complete all the same, and the maps are what
// they always are.

#include "attack/host/hostile_fixture.h"
#include "attack/host/run_record.h"

#include <filesystem>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace zn::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFiles[] = {"ICA.vox", "Covariance.txt", "ParamsMatrix.txt", "run1.eig", "run1_ICA.rtc"};

class Surroundings : public HostileFixture {
protected:
    Surroundings() {
        attack("nothing");
        maps = recordOfMaps(host);
        for (const char* file : kFiles) fs::remove(file);
        restoreHost();
    }

    void expectSameMaps(const std::string& attempt) {
        EXPECT_TRUE(attack(attempt));
        EXPECT_TRUE(recordOfMaps(host) == maps) << attempt;
    }

    std::string maps;
};

TEST_F(Surroundings, WithoutADescriptorForAFile) {
    const int lowest = open("/dev/null", O_RDONLY | O_CLOEXEC);
    ASSERT_GE(lowest, 0);
    close(lowest);
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{static_cast<rlim_t>(lowest), before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    expectSameMaps("no descriptor left");
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    for (const char* file : kFiles) EXPECT_FALSE(fs::exists(file)) << file;
}

TEST_F(Surroundings, WithoutACurrentFolder) {
    const fs::path before = fs::current_path();
    fs::create_directory("removed");
    fs::current_path("removed");
    fs::remove(before / "removed");
    expectSameMaps("no current folder");
    fs::current_path(before);
}

TEST_F(Surroundings, WithFoldersInPlaceOfTheFiles) {
    for (const char* file : kFiles) fs::create_directory(file);
    expectSameMaps("folders");
    for (const char* file : kFiles) EXPECT_TRUE(fs::is_empty(file)) << file;
}

TEST_F(Surroundings, WithAFullDisk) {
    for (const char* file : kFiles) fs::create_symlink("/dev/full", file);
    expectSameMaps("full disk");
}

} // namespace
} // namespace zn::test
