// The list of host functions compared with an independently typed one: names, order and number.

#include "host/host_api.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace zn::test {
namespace {

constexpr const char* kTyped =
    // host, log and user input
    "znGetVersionOfTesmiraZN znGetTesmiraZNPath znGetPluginsPath znShowLogPane znShowLogTab znLogText znMessageBox "
    "znYesNoMessageBox znGetIntegerInput znGetFloatInput znGetTextInput znGetOpenFileName znGetSaveFileName "
    "znUpdateActiveWindow znShowBusyCursor znStopBusyCursor "
    // plots
    "znCloseAllPlots znPlotPoints znAddPointsToPlot znPlotLine znAddLineToPlot znPlotBars znAddBarsToPlot "
    "znShowPlotAtPosition znResizePlot znSetBarPlotXAxisCategories znSetPlotXAxisRange znSetPlotYAxisRange "
    "znSetPlotXAxisTitle znSetPlotYAxisTitle znSetPlotXAxisProperties znSetPlotYAxisProperties znSetPlotTitle "
    "znSetPlotMarkerSizeAndColor znSetPlotLineSizeAndColor znSetPlotBarColors znSetPlotFontSizes znShowPlotLegend "
    "znSetPlotColorTheme "
    // documents, functional and diffusion series
    "znGetNumberOfDocsInWorkspace znGetDocumentType znGetDocumentTypeName znGetIDOfCurrentDocument "
    "znSetAsCurrentDocument znCalculateIAMatrix znGetTRFParametersFromVolumeToolsDlg znGetHeaderOfCurrentFMR "
    "znSetHeaderOfCurrentFMR znGetSTCFloatDataOfCurrentFMR znGetSTCIntDataOfCurrentFMR znGetSTCDataOfCurrentFMR "
    "znSaveFMR znSaveFMRAndSTC znGetScannerPositionHeaderOfCurrentFMR znSetScannerPositionHeaderOfCurrentFMR "
    "znGetHeaderOfCurrentDMR znSetHeaderOfCurrentDMR znGetDWIFloatDataOfCurrentDMR znGetDWIIntDataOfCurrentDMR "
    "znGetDWIDataOfCurrentDMR znConvertDWIFormatOfCurrentDMR znSaveDMR znSaveDMRAndDWI znGetMAPOfCurrentFMR "
    "znSetMAPParametersOfCurrentFMR znDeleteMAPsOfCurrentFMR znLoadMAPsToCurrentFMR znSaveMAPsOfCurrentFMR "
    "znCreateMAPForCurrentFMR "
    // anatomical volume and volume maps
    "znGetCurrentVMR znGetMainHeaderOfCurrentVMR znSetMainHeaderOfCurrentVMR znGetScannerPositionHeaderOfCurrentVMR "
    "znSetScannerPositionHeaderOfCurrentVMR znGetPastTransformationsHeaderOfCurrentVMR "
    "znSetPastTransformationsHeaderOfCurrentVMR znReframeCurrentVMR znGetCrossPositionOfCurrentVMR "
    "znGetNRVMPsOfCurrentVMR znGetNRVMPOfCurrentVMR znSetNRVMPParametersOfCurrentVMR znLoadNRVMPsToCurrentVMR "
    "znAddNRVMPsToCurrentVMR znSaveNRVMPsOfCurrentVMR znCreateNRVMPsForCurrentVMR znDeleteNRVMPsOfCurrentVMR "
    "znDeleteNRVMPMap znSetNRVMPsParamsDisplayRange znGetARVMPsOfCurrentVMR znGetARVMPOfCurrentVMR "
    "znSetARVMPParametersOfCurrentVMR znLoadARVMPsToCurrentVMR znSaveARVMPsOfCurrentVMR znCreateARVMPsForCurrentVMR "
    "znDeleteARVMPsOfCurrentVMR "
    // functional time courses, linear models and masks
    "znLinkVTCToCurrentVMR znCreateVTCForCurrentVMR znGetHeaderOfVTCOfCurrentVMR znSetHeaderOfVTCOfCurrentVMR "
    "znGetVTCOfCurrentVMR znGetVTCFloatDataOfCurrentVMR znGetVTCIntDataOfCurrentVMR znSetVTCParametersOfCurrentVMR "
    "znSaveVTCOfCurrentVMR znClearMultiVTCAnalysis znAddVTCRefForMultiVTCAnalysis znGetVoxelTimeCourseOfVTC "
    "znGetVoxelTimeCourseOfVTCs znGetVoxelCoordsTimeCourseOfVTC znGetVoxelCoordsTimeCourseOfVTCs "
    "znGetGLMOfCurrentVMR znGetGLMContrastsOfCurrentVMR znLoadMaskToCurrentVMR znGetMaskOfCurrentVMR "
    // surfaces
    "znGetScene znLoadSRF znAddSRF znRemoveCurrentSRF znGetCurrentSRF znReleaseSRFAccess znSaveCurrentSRF "
    "znSetCurrentSRF znLinkMTCToCurrentSRF znGetMTCOfCurrentSRF znSetMTCParametersOfCurrentSRF "
    "znCreateMTCForCurrentSRF znSaveMTCOfCurrentSRF znClearMultiMTCRefsOfCurrentSRF znAddMultiMTCRefToCurrentSRF "
    "znGetVertexTimeCourseOfMTC znGetVertexTimeCourseOfAllMTCs znGetSMPsOfCurrentSRF znGetSMPOfCurrentSRF "
    "znSetSMPParametersOfCurrentSRF znLoadSMPsToCurrentSRF znSaveSMPsOfCurrentSRF znCreateSMPForCurrentSRF "
    "znDeleteSMPsOfCurrentSRF znOverlaySMPsOnSRF znGetSSMOfCurrentSRF znLoadSSMToCurrentSRF znSaveSSMOfCurrentSRF "
    "znCreateSSMForCurrentSRF znDeleteSSMOfCurrentSRF "
    // protocols and design matrices
    "znClearProtocol znLoadProtocol znSaveProtocol znGetProtocol znSetProtocol znGetProtocolCondition "
    "znAddProtocolCondition znAddProtocolConditionInterval znClearDesignMatrix znAddPredictor "
    "znSetPredictorValuesFromCondition znSetPredictorValuesFromConditionName znApplyTwoGammaHRFToPredictor "
    "znApplyTwoGammaHRFToPredictorWithName znApplyBoyntonHRFToPredictor znApplyBoyntonHRFToPredictorWithName "
    "znGetPredictor znGetPredictorByName znLoadSingleStudyGLMDesignMatrix znSaveSingleStudyGLMDesignMatrix "
    // regions and parameters
    "znLoadVOIs znSaveVOIs znGetVOIs znGetVOI znLoadPOIs znSavePOIs znGetPOIs znGetPOI znGetStringParameter "
    "znGetIntParameter znGetFloatParameter znSetStringParameter znSetIntParameter znSetFloatParameter "
    "znGetDlgStringParameter znGetDlgIntegerParameter znGetDlgFloatParameter znSetDlgStringOutputParameter "
    "znSetDlgIntegerOutputParameter znSetDlgFloatOutputParameter znLaunchICADialog";

std::vector<std::string> typed() {
    std::istringstream words(kTyped);
    std::vector<std::string> names;
    for (std::string name; words >> name;) names.push_back(name);
    return names;
}

std::vector<std::string> bound() {
    return {
#define ZN(result, name, parameters) #name,
#define ZN_UNUSED(name) #name,
#include "host/host_functions.def"
#undef ZN_UNUSED
#undef ZN
    };
}

TEST(HostFunctionList, HasTheNamesInBindingOrder) {
    EXPECT_EQ(bound(), typed());
}

TEST(HostFunctionList, FillsTheTableWithNothingElse) {
    EXPECT_EQ(sizeof(HostApi), typed().size() * sizeof(void*));
}

TEST(HostFunctionList, HasTheFourProductsInBindingOrder) {
    const std::vector<std::string> names = {
#define ZN(result, name, parameters) #name,
#include "host/host_matrix_products.def"
#undef ZN
    };
    EXPECT_EQ(names, (std::vector<std::string>{"zn_intel_matrix_matrix_mult_f", "zn_intel_matrix_matrix_mult_d",
                                               "zn_intel_matrix_vector_mult_f", "zn_intel_matrix_vector_mult_d"}));
}

} // namespace
} // namespace zn::test
