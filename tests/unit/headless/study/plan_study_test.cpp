// Which runs a dataset has and what belongs to them: small trees of empty files with lists written by hand.
#include "headless/study/plan_study.h"

#include "files.h"
#include "headless/failure/failure.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

namespace fs = std::filesystem;

class PlanStudy : public testing::Test {
protected:
    PlanStudy() { options.dataset = folder / "ds"; }

    void make(const std::vector<std::string>& files) const {
        for (const std::string& file : files) {
            fs::create_directories((folder / file).parent_path());
            writeFile(folder / file, "");
        }
    }
    void useDerivatives() { options.derivatives = {{"prep", folder / "prep"}}; }

    StudyPlan plan() const { return planStudy(options); }
    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const PlannedRun& run : plan().runs) result.push_back(run.name);
        return result;
    }
    std::string complaint() const {
        try {
            plan();
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.status(), ExitStatus::kInput);
            return failure.what();
        }
        return "";
    }
    std::string below(const fs::path& file) const {
        return file.empty() ? "" : file.lexically_relative(folder.path()).string();
    }

    const TemporaryFolder folder;
    StudyOptions options;
};

TEST_F(PlanStudy, TakesTheImagesOfSubjectsWithAndWithoutSessions) {
    make({"ds/sub-02/func/sub-02_task-rest_bold.nii", "ds/sub-02/anat/sub-02_T1w.nii.gz",
          "ds/sub-01/ses-b/func/sub-01_ses-b_task-rest_bold.nii.gz",
          "ds/sub-01/ses-a/func/sub-01_ses-a_task-rest_rec-dis_run-1_bold.nii.gz",
          "ds/sub-01/ses-a/func/sub-01_ses-a_task-rest_rec-dis_run-1_sbref.nii.gz",
          "ds/sub-01/ses-a/func/sub-01_ses-a_task-nback_bold.nii.gz", "ds/sourcedata/sub-03/func/sub-03_bold.nii.gz",
          "ds/derivatives/x/sub-01/func/sub-01_task-rest_desc-preproc_bold.nii.gz"});
    EXPECT_THAT(names(), ElementsAre("sub-01_ses-a_task-nback", "sub-01_ses-a_task-rest_rec-dis_run-1",
                                     "sub-01_ses-b_task-rest", "sub-02_task-rest"));
}

TEST_F(PlanStudy, ChoosesSubjectsSessionsTasksAndRuns) {
    for (const char* subject : {"sub-01", "sub-02"}) {
        for (const char* session : {"ses-1", "ses-2"}) {
            const std::string begin = std::string("ds/") + subject + "/" + session + "/func/" + subject + "_" + session;
            make({begin + "_task-rest_run-01_bold.nii.gz", begin + "_task-rest_run-02_bold.nii.gz",
                  begin + "_task-face_bold.nii.gz"});
        }
    }
    options.selection.participants = {"sub-02"};
    options.selection.sessions = {"2"};
    EXPECT_THAT(names(), ElementsAre("sub-02_ses-2_task-face", "sub-02_ses-2_task-rest_run-01",
                                     "sub-02_ses-2_task-rest_run-02"));
    options.selection.tasks = {"rest"};
    options.selection.runs = {"2"};
    EXPECT_THAT(names(), ElementsAre("sub-02_ses-2_task-rest_run-02"));
    options.selection = {};
    options.selection.only = "sub-01_ses-1_task-face";
    EXPECT_THAT(names(), ElementsAre("sub-01_ses-1_task-face"));
}

TEST_F(PlanStudy, PassesOverWhatCannotBeAnalysedAndSaysSo) {
    const std::string begin = "ds/sub-01/func/sub-01_task-rest";
    make({begin + "_bold.nii.gz", begin + "_echo-1_bold.nii.gz", begin + "_echo-2_bold.nii.gz",
          begin + "_part-phase_bold.nii.gz", begin + "_hemi-L_bold.func.gii", begin + "_space-fsLR_bold.dtseries.nii",
          begin + " copy_bold.nii.gz", "ds/sub-01/func/sub-02_task-rest_bold.nii.gz"});
    const StudyPlan found = plan();
    EXPECT_THAT(found.runs, ElementsAre(testing::Field(&PlannedRun::name, "sub-01_task-rest")));
    EXPECT_THAT(found.notes, Contains(AllOf(HasSubstr("single echoes"), HasSubstr("echo-1"), HasSubstr("echo-2"))));
    EXPECT_THAT(found.notes, Contains(AllOf(HasSubstr("phase"), HasSubstr("part-phase"))));
    EXPECT_THAT(found.notes, Contains(AllOf(HasSubstr("surfaces"), HasSubstr("hemi-L"), HasSubstr("dtseries"))));
    EXPECT_THAT(found.notes, Contains(AllOf(HasSubstr("not BIDS"), HasSubstr("copy"))));
    EXPECT_THAT(found.notes, Contains(AllOf(HasSubstr("another subject"), HasSubstr("sub-02"))));
}

TEST_F(PlanStudy, MatchesDerivativesByAllEntities) {
    const std::string begin = "prep/sub-01/func/sub-01_task-rest_run-1";
    make({"ds/sub-01/func/sub-01_task-rest_run-1_events.tsv", begin + "_space-MNI_res-2_desc-preproc_bold.nii.gz",
          begin + "_space-MNI_res-2_desc-brain_mask.nii.gz", begin + "_space-T1w_desc-brain_mask.nii.gz",
          begin + "_space-MNI_desc-brain_mask.nii.gz", begin + "_desc-brain_mask.nii.gz",
          begin + "_desc-confounds_timeseries.tsv", "prep/sub-01/func/sub-01_task-rest_desc-confounds_timeseries.tsv"});
    useDerivatives();
    options.run.designBesideImage = true;
    options.confoundsFromDerivatives = true;
    const StudyPlan found = plan();
    ASSERT_EQ(found.runs.size(), 1U);
    const PlannedRun& run = found.runs.front();
    EXPECT_EQ(run.name, "sub-01_task-rest_run-1_space-MNI_res-2");
    EXPECT_EQ(below(run.image), begin + "_space-MNI_res-2_desc-preproc_bold.nii.gz");
    EXPECT_EQ(below(run.mask), begin + "_space-MNI_res-2_desc-brain_mask.nii.gz");
    EXPECT_EQ(below(run.confounds), begin + "_desc-confounds_timeseries.tsv");
    EXPECT_EQ(below(run.events), "ds/sub-01/func/sub-01_task-rest_run-1_events.tsv");
}

TEST_F(PlanStudy, TakesNothingInPlaceOfWhatIsAbsent) {
    const std::string begin = "prep/sub-01/func/sub-01_task-rest_run-2";
    make({"ds/sub-01/func/sub-01_task-rest_run-1_events.tsv", "ds/sub-01/func/sub-01_task-rest_events.tsv",
          begin + "_space-MNI_res-2_desc-preproc_bold.nii.gz", begin + "_space-MNI_desc-brain_mask.nii.gz",
          begin + "_space-MNI_res-1_desc-brain_mask.nii.gz",
          "prep/sub-01/func/sub-01_task-rest_desc-confounds_timeseries.tsv"});
    useDerivatives();
    options.run.designBesideImage = true;
    options.confoundsFromDerivatives = true;
    const StudyPlan found = plan();
    ASSERT_EQ(found.runs.size(), 1U);
    EXPECT_EQ(below(found.runs[0].mask) + below(found.runs[0].confounds) + below(found.runs[0].events), "");
    EXPECT_THAT(found.notes, Contains("Without events: sub-01_task-rest_run-2_space-MNI_res-2."));
    options.maskFrom = MaskFrom::kDerivatives;
    EXPECT_THAT(plan().runs[0].problem, HasSubstr("has no mask with the same entities"));
}

TEST_F(PlanStudy, WantsASpaceToBeChosen) {
    const std::string begin = "prep/sub-01/func/sub-01_task-rest";
    make({"ds/sub-01/func/sub-01_task-rest_bold.nii.gz", begin + "_space-MNI_res-1_desc-preproc_bold.nii.gz",
          begin + "_space-MNI_res-2_desc-preproc_bold.nii.gz", begin + "_desc-preproc_bold.nii.gz"});
    useDerivatives();
    EXPECT_THAT(complaint(), HasSubstr("in the spaces MNI:res-1, MNI:res-2, func; choose one with --space"));
    options.selection.space = "MNI";
    EXPECT_THAT(complaint(), HasSubstr("in the spaces MNI:res-1, MNI:res-2; choose one with --space"));
    options.selection.space = "MNI:res-2";
    EXPECT_THAT(names(), ElementsAre("sub-01_task-rest_space-MNI_res-2"));
    options.selection.space = "func";
    EXPECT_THAT(names(), ElementsAre("sub-01_task-rest"));
    options.selection.space = "T1w";
    EXPECT_THAT(complaint(), HasSubstr("no image is in the space T1w; the spaces are MNI:res-1"));
}

TEST_F(PlanStudy, RefusesASpaceWithoutDerivatives) {
    make({"ds/sub-01/func/sub-01_task-rest_bold.nii.gz"});
    options.selection.space = "MNI";
    EXPECT_THAT(complaint(), HasSubstr("--space chooses among preprocessed images"));
}

TEST_F(PlanStudy, TakesADatasetOfDerivativesAsSuch) {
    make({"ds/sub-01/func/sub-01_task-rest_desc-preproc_bold.nii.gz",
          "ds/sub-01/func/sub-01_task-rest_desc-smooth_bold.nii.gz",
          "ds/sub-01/func/sub-01_task-rest_desc-brain_mask.nii.gz"});
    writeFile(folder / "ds/dataset_description.json", R"({"DatasetType": "derivative"})");
    EXPECT_THAT(names(), ElementsAre("sub-01_task-rest"));
    EXPECT_EQ(below(plan().runs[0].mask), "ds/sub-01/func/sub-01_task-rest_desc-brain_mask.nii.gz");
}

TEST_F(PlanStudy, CountsVolumesBeforeTheSteadyState) {
    const std::string begin = "prep/sub-01/func/sub-01_task-rest";
    make({"ds/sub-01/func/sub-01_task-rest_bold.nii.gz", begin + "_desc-preproc_bold.nii.gz"});
    useDerivatives();
    options.dummyScansFromConfounds = true;
    EXPECT_THAT(plan().runs[0].problem, HasSubstr("has no table of confounds, which --dummy-scans confounds needs"));
    writeFile(folder / (begin + "_desc-confounds_timeseries.tsv"),
              "trans_x\tnon_steady_state_outlier00\tnon_steady_state_outlier01\n"
              "0\t1\t0\n0\t0\t1\n0\t0\t0\n0\t0\t0\n");
    EXPECT_EQ(plan().runs[0].dummyScans, 2);
}

TEST_F(PlanStudy, RefusesLabelsThatDoNotExist) {
    make({"ds/sub-01/func/sub-01_task-rest_bold.nii.gz", "ds/sub-02/func/sub-02_task-face_bold.nii.gz"});
    options.selection.participants = {"1"};
    EXPECT_THAT(complaint(), HasSubstr("there is no sub-1 in "));
    EXPECT_THAT(complaint(), HasSubstr("it has sub-01, sub-02"));
    options.selection = {};
    options.selection.sessions = {"1"};
    EXPECT_THAT(complaint(), HasSubstr("there is no ses-1 in "));
    options.selection = {};
    options.selection.tasks = {"rset"};
    EXPECT_THAT(complaint(), HasSubstr("no image has the label task-rset; the labels are face, rest"));
    options.selection = {};
    options.selection.only = "sub-01_task-face";
    EXPECT_THAT(complaint(), HasSubstr("there is no run named sub-01_task-face"));
}

TEST_F(PlanStudy, RefusesFoldersThatAreNotDatasets) {
    EXPECT_THAT(complaint(), HasSubstr("ds does not exist"));
    fs::create_directories(folder / "ds");
    EXPECT_THAT(complaint(), HasSubstr("ds has no folders sub-*"));
    fs::create_directories(folder / "ds/sub-01/anat");
    EXPECT_THAT(complaint(), HasSubstr("have no *_bold.nii.gz in sub-*/[ses-*/]func"));
}

TEST_F(PlanStudy, RefusesTwoImagesForOneResult) {
    make({"ds/sub-01/func/sub-01_task-rest_bold.nii.gz", "ds/sub-01/func/sub-01_task-rest_bold.nii"});
    EXPECT_THAT(complaint(), HasSubstr("would have the same result, sub-01_task-rest; leave one of them out"));
}

TEST_F(PlanStudy, KeepsARunWhoseImageIsABrokenLinkAsAProblem) {
    make({"ds/sub-01/func/sub-01_task-rest_bold.nii.gz"});
    fs::create_symlink("../annex/missing", folder / "ds/sub-01/func/sub-01_task-face_bold.nii.gz");
    const StudyPlan found = plan();
    ASSERT_EQ(found.runs.size(), 2U);
    EXPECT_THAT(found.runs[0].problem,
                HasSubstr("is a link to ../annex/missing, which does not exist; fetch the file"));
    EXPECT_EQ(found.runs[1].problem, "");
}

TEST_F(PlanStudy, AcceptsPathsBeyondAscii) {
    options.dataset = folder / "Messung \xc3\xa4";
    make({"Messung \xc3\xa4/sub-01/func/sub-01_task-rest_bold.nii.gz"});
    EXPECT_THAT(names(), ElementsAre("sub-01_task-rest"));
}

} // namespace

} // namespace zn::test
