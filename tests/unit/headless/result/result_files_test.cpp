// The list of a result's files and its users.
#include "headless/result/result_files.h"

#include "files.h"
#include "headless/failure/failure.h"
#include "headless/result/bids_files.h"

#include <regex>
#include <set>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::HasSubstr;

// The names in the first column of the README's table of result files, with "..." for the stem.
std::set<std::string> namesInReadme() {
    const std::string text = textOf(README_FILE);
    const std::size_t begin = text.find("| file in the result folder |");
    EXPECT_NE(begin, std::string::npos);
    const std::string table = text.substr(begin, text.find("\n\n", begin) - begin);
    std::set<std::string> names;
    const std::regex row("\n\\| ([^|]*)\\|");
    const std::regex name("`([^`]*)`");
    for (std::sregex_iterator r(table.begin(), table.end(), row), end; r != end; ++r) {
        const std::string cell = (*r)[1];
        for (std::sregex_iterator n(cell.begin(), cell.end(), name); n != end; ++n) names.insert((*n)[1]);
    }
    return names;
}

TEST(ResultFiles, AreThoseOfTheReadmesTable) {
    std::set<std::string> listed;
    for (const ResultFileEntry& entry : resultFileList()) {
        if (entry.isOfRun()) {
            listed.insert(entry.in("..."));
        }
    }
    EXPECT_EQ(namesInReadme(), listed);
}

TEST(ResultFiles, OfAnImageAreFoundInTheFolderOfAStudy) {
    const TemporaryFolder study;
    const auto of = [&](const std::string& place, const std::string& stem) {
        std::filesystem::create_directories(study / place);
        writeFile(study / (place + "/" + stem + "_desc-ICA_components.nii.gz"), "");
        return ResultFiles::of("bids/" + stem + "_bold.nii.gz", study.path()).folder();
    };
    EXPECT_EQ(of("sub-01/func", "sub-01_task-rest"), study / "sub-01/func");
    EXPECT_EQ(of("sub-01/ses-b/func", "sub-01_ses-b_task-rest"), study / "sub-01/ses-b/func");
    EXPECT_THROW(ResultFiles::of("bids/sub-02_task-rest_bold.nii.gz", study.path()), Failure);
}

TEST(ResultFiles, AreFoundByTheStemOfTheComponentMaps) {
    const TemporaryFolder folder;
    writeFile(folder / "sub-02_run-1_desc-ICA_components.nii.gz", "");
    writeFile(folder / "other_bold.nii.gz", "");
    const ResultFiles files = ResultFiles::in(folder.path());
    EXPECT_EQ(files.stem(), "sub-02_run-1");
    EXPECT_EQ(files[ResultFile::kMetrics], folder / "sub-02_run-1_desc-ICA_metrics.tsv");
    EXPECT_EQ(files[ResultFile::kLog], folder / "log.txt");
    EXPECT_TRUE(files.has(ResultFile::kComponents));
    EXPECT_FALSE(files.has(ResultFile::kMetrics));
}

TEST(ResultFiles, OfAFolderWithoutMapsAreRefused) {
    const TemporaryFolder folder;
    try {
        ResultFiles::in(folder.path());
        FAIL() << "accepted";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.status(), ExitStatus::kInput);
        EXPECT_THAT(failure.what(), HasSubstr(" has no file that ends in _desc-ICA_components.nii.gz; name a folder "
                                              "created by znica run."));
    }
}

TEST(ResultFiles, OfAnImageAreTheOnlyOnesOrThoseWithItsName) {
    const TemporaryFolder folder;
    writeFile(folder / "sub-02_run-1_desc-ICA_components.nii.gz", "");
    EXPECT_EQ(ResultFiles::of("smoothed.nii", folder.path()).stem(), "sub-02_run-1");
    writeFile(folder / "sub-02_run-2_desc-ICA_components.nii.gz", "");
    EXPECT_EQ(ResultFiles::of("in/sub-02_run-2_desc-preproc_bold.nii.gz", folder.path()).stem(), "sub-02_run-2");
    try {
        ResultFiles::of("smoothed.nii", folder.path());
        FAIL() << "accepted";
    } catch (const Failure& failure) {
        EXPECT_THAT(failure.what(),
                    HasSubstr(" holds the results of 2 runs, but none named smoothed after smoothed.nii; "
                              "give the image the name of its run."));
    }
}

TEST(ResultFiles, WithoutABidsNameAreIgnoredByValidators) {
    const TemporaryFolder folder;
    writeBidsFiles(ResultFiles(folder.path(), "sub-01"), "1", "plug-in", "2");
    EXPECT_EQ(textOf(folder / ".bidsignore"), "plugin/\nlog.txt\nstatus.json\nreport.html\n*_desc-ICA_*\n");
}

} // namespace
} // namespace zn::test
