// A power cut after a result was replaced: the disk is a file, and a copy of it is what the next boot finds.
#include "attack/faults/disturbed_command.h"
#include "attack/faults/snapshot.h"
#include "cli/nifti_bytes.h"
#include "files.h"

#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace zn::test {
namespace {

namespace fs = std::filesystem;

bool succeeds(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

// A file system in a file, mounted as long as this lives. In a mount namespace of the test's own.
class MountedImage {
public:
    MountedImage(const fs::path& image, const fs::path& folder) : folder_(folder) {
        fs::create_directory(folder);
        isMounted_ = succeeds("mount -t ext4 -o loop '" + image.string() + "' '" + folder.string() + "'");
    }
    ~MountedImage() {
        if (isMounted_) succeeds("umount '" + folder_.string() + "'");
    }
    MountedImage(const MountedImage&) = delete;
    MountedImage& operator=(const MountedImage&) = delete;
    bool isMounted() const { return isMounted_; }

private:
    fs::path folder_;
    bool isMounted_ = false;
};

class PowerCut : public testing::Test {
protected:
    void SetUp() override {
        if (unshare(CLONE_NEWNS) != 0 || mount("", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
            GTEST_SKIP() << "mounts are not allowed here";
        }
        writeFile(folder / "bold.nii", plainSeries(24).bytes());
        const std::string image = (folder / "disk").string();
        if (!succeeds("truncate -s 64M '" + image + "' && PATH=$PATH:/sbin:/usr/sbin mkfs.ext4 -q '" + image + "'")) {
            GTEST_SKIP() << "mkfs.ext4 is not installed";
        }
    }
    Ending run(const std::string& seed, const std::vector<std::string>& options) {
        std::vector<std::string> arguments = {
            "run", (folder / "bold.nii").string(), "--components", "2", "--epsilon", "0.9", "--no-report", "--seed",
            seed};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return runDisturbed(arguments, {folder / "mounted", {folder / "mounted"}}, {});
    }
    // The folder "out" of a disk as the next boot sees it: the journal is replayed when it is mounted.
    Snapshot outOf(const fs::path& image) {
        const MountedImage again(image, folder / "again");
        EXPECT_TRUE(again.isMounted());
        Snapshot out = below(snapshotOf(folder / "again"), "out");
        std::erase_if(out, [](const auto& entry) { return isLeftover(entry.first); });
        return out;
    }
    TemporaryFolder folder;
};

TEST_F(PowerCut, LeavesTheResultThatWasReportedAsWritten) {
    for (const bool inside : {false, true}) {
        Snapshot wanted;
        {
            const MountedImage disk(folder / "disk", folder / "mounted");
            if (!disk.isMounted()) GTEST_SKIP() << "loop devices are not allowed here";
            const fs::path out = folder / "mounted/out";
            fs::remove_all(out);
            ASSERT_EQ(run("1", {"--out", out.string()}).status, 0);
            sync();
            // As when a folder is mounted into a container: entries are exchanged one by one.
            ASSERT_TRUE(!inside || succeeds("mount --bind '" + out.string() + "' '" + out.string() + "'"));
            ASSERT_EQ(run("2", {"--out", out.string(), "--force"}).status, 0);
            wanted = snapshotOf(out);
            fs::copy_file(folder / "disk", folder / "at once", fs::copy_options::overwrite_existing);
            sleep(7); // by now the journal has been committed, while data not synced would still be in memory
            fs::copy_file(folder / "disk", folder / "later", fs::copy_options::overwrite_existing);
            if (inside) succeeds("umount '" + out.string() + "'");
        }
        ASSERT_GE(wanted.size(), 15U);
        EXPECT_TRUE(outOf(folder / "at once") == wanted) << "inside: " << inside;
        EXPECT_TRUE(outOf(folder / "later") == wanted) << "inside: " << inside;
    }
}

} // namespace
} // namespace zn::test
