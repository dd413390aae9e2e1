// How a result folder reacts when its place is taken at the last moment.
#include "headless/result/result_folder.h"

#include "files.h"
#include "headless/failure/failure.h"
#include "headless/result/move_entries.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

class ResultFolderTest : public testing::Test {
protected:
    void write(const fs::path& file) {
        fs::create_directories((folder.path() / file).parent_path());
        writeFile(folder.path() / file, file.string());
    }

    TemporaryFolder folder;
};

// For example with two runs into one folder: the second has to notice the result of the first.
TEST_F(ResultFolderTest, DoesNotTouchWhatTookItsPlaceAndKeepsTheResult) {
    for (const bool replace : {false, true}) {
        const fs::path left = folder / "out.finished";
        {
            UnfinishedWork unfinished;
            ResultFolder result(unfinished, folder / "out", ResultKind::kRun, replace);
            writeFile(result.path() / "log.txt", "finished");
            write("out/notes.txt");
            try {
                result.commit();
                ADD_FAILURE() << "the place was taken";
            } catch (const Failure& failure) {
                EXPECT_EQ(failure.status(), ExitStatus::kOther);
                EXPECT_THAT(failure.what(), HasSubstr(" The finished result is in " + left.string() + "."));
            }
        }
        EXPECT_THAT(namesIn(folder / "out"), ElementsAre("notes.txt"));
        EXPECT_TRUE(fs::exists(left / "log.txt"));
        fs::remove_all(folder / "out");
        fs::remove_all(left);
    }
}

TEST_F(ResultFolderTest, EntriesGoBackWhenOneCannotBeMoved) {
    for (const char* name : {"a", "b", "c", "d"}) write(fs::path("from") / name);
    write("to/c/in the way"); // a file does not take the place of a folder
    EXPECT_THROW(moveEntries(folder / "from", folder / "to"), fs::filesystem_error);
    EXPECT_THAT(namesIn(folder / "from"), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(namesIn(folder / "to"), ElementsAre("c"));
}

} // namespace
} // namespace zn::test
