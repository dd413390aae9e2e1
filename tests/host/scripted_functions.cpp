// The scripted host's functions as the plug-in finds them.

#include "host/scripted_call.h"
#include "host/scripted_host.h"
#include "host/voi_records.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

using namespace zn;
using zn::test::Call;
using zn::test::scripted;
using zn::test::ScriptedMap;

namespace {

std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

std::string call(const char* name, std::initializer_list<std::string> arguments) {
    std::string text = std::string(name) + "(";
    const char* separator = "";
    for (const auto& argument : arguments) {
        text += separator + argument;
        separator = ", ";
    }
    return text + ")";
}

char* buffer(std::string& text) {
    text.assign(256, '#');
    return text.data();
}

// What the function returns after the test has had its say.
int answer(const char* function, int value) {
    if (const auto& change = scripted().misbehaviour.integer) change(function, value);
    return value;
}

float answer(const char* function, float value) {
    if (const auto& change = scripted().misbehaviour.number) change(function, value);
    return value;
}

template <class T> T* answer(const char* function, T* value) {
    void* pointer = value;
    if (const auto& change = scripted().misbehaviour.pointer) change(function, pointer);
    return static_cast<T*>(pointer);
}

template <class Record> void change(const std::function<void(Record&)>& change, Record& record) {
    if (change) change(record);
}

} // namespace

// --- log and user input ---------------------------------------------------------------------------------------------

ZN_HOST_FUNCTION void znGetVersionOfTesmiraZN(int* major, int* minor, int* patch) {
    const Call entered("znGetVersionOfTesmiraZN()");
    *major = scripted().version[0];
    *minor = scripted().version[1];
    *patch = scripted().version[2];
}

ZN_HOST_FUNCTION void znShowLogTab() {
    const Call entered("znShowLogTab()");
}

ZN_HOST_FUNCTION void znLogText(const char* text) {
    const Call entered(call("znLogText", {text}));
}

ZN_HOST_FUNCTION void znMessageBox(const char* text) {
    const Call entered(call("znMessageBox", {text}));
}

ZN_HOST_FUNCTION int znGetIntegerInput(const char* prompt, int initial, int minimum, int maximum) {
    const Call entered(call("znGetIntegerInput", {prompt, number(initial), number(minimum), number(maximum)}));
    return answer("znGetIntegerInput", scripted().clusterSize);
}

ZN_HOST_FUNCTION float znGetFloatInput(const char* prompt, float initial, float minimum, float maximum) {
    const Call entered(
        call("znGetFloatInput", {prompt, number(static_cast<double>(initial)), number(static_cast<double>(minimum)),
                                 number(static_cast<double>(maximum))}));
    return answer("znGetFloatInput", scripted().zThreshold);
}

ZN_HOST_FUNCTION int znGetTextInput(const char* prompt, const char* initial, char* text) {
    const Call entered(call("znGetTextInput", {prompt, initial}));
    if (!scripted().label) return answer("znGetTextInput", 0);
    std::strncpy(text, scripted().label->c_str(), 256); // NOLINT: a host that does not terminate a full buffer
    return answer("znGetTextInput", 1);
}

ZN_HOST_FUNCTION void znUpdateActiveWindow() {
    const Call entered("znUpdateActiveWindow()");
}

ZN_HOST_FUNCTION void znShowBusyCursor() {
    const Call entered("znShowBusyCursor()");
}

ZN_HOST_FUNCTION void znStopBusyCursor() {
    const Call entered("znStopBusyCursor()");
}

// --- the dialog -----------------------------------------------------------------------------------------------------

ZN_HOST_FUNCTION void znGetDlgStringParameter(int index, char* text) {
    const Call entered(call("znGetDlgStringParameter", {number(index)}));
    std::strncpy(text, scripted().dialogStrings[static_cast<std::size_t>(index)].c_str(), 256); // NOLINT: as above
}

ZN_HOST_FUNCTION int znGetDlgIntegerParameter(int index) {
    const Call entered(call("znGetDlgIntegerParameter", {number(index)}));
    return answer("znGetDlgIntegerParameter", scripted().dialogIntegers[index]);
}

ZN_HOST_FUNCTION float znGetDlgFloatParameter(int index) {
    const Call entered(call("znGetDlgFloatParameter", {number(index)}));
    return answer("znGetDlgFloatParameter", scripted().epsilon);
}

ZN_HOST_FUNCTION void znLaunchICADialog() {
    const Call entered("znLaunchICADialog()");
}

// --- volumes and functional data ------------------------------------------------------------------------------------

ZN_HOST_FUNCTION void* znGetCurrentVMR(int* first, int* second, int* third) {
    const Call entered("znGetCurrentVMR()");
    for (int* size : {first, second, third}) *size = answer("znGetCurrentVMR", 256);
    return answer("znGetCurrentVMR", scripted().hasVmr ? &scripted() : nullptr);
}

ZN_HOST_FUNCTION int znLinkVTCToCurrentVMR(const char* fileName, int link) {
    const Call entered(call("znLinkVTCToCurrentVMR", {fileName, number(link)}));
    return answer("znLinkVTCToCurrentVMR", scripted().linksVtc ? 1 : 0);
}

ZN_HOST_FUNCTION int znLoadMaskToCurrentVMR(const char* fileName) {
    const Call entered(call("znLoadMaskToCurrentVMR", {fileName}));
    return answer("znLoadMaskToCurrentVMR", scripted().loadsMask ? 1 : 0);
}

ZN_HOST_FUNCTION unsigned char* znGetMaskOfCurrentVMR() {
    const Call entered("znGetMaskOfCurrentVMR()");
    return answer("znGetMaskOfCurrentVMR", scripted().mask ? scripted().mask->data() : nullptr);
}

ZN_HOST_FUNCTION void znGetHeaderOfVTCOfCurrentVMR(VtcHeader* header) {
    const Call entered("znGetHeaderOfVTCOfCurrentVMR()");
    *header = scripted().header;
}

ZN_HOST_FUNCTION float* znGetVTCFloatDataOfCurrentVMR() {
    const Call entered("znGetVTCFloatDataOfCurrentVMR()");
    return answer("znGetVTCFloatDataOfCurrentVMR", scripted().floats.empty() ? nullptr : scripted().floats.data());
}

ZN_HOST_FUNCTION short* znGetVTCIntDataOfCurrentVMR() {
    const Call entered("znGetVTCIntDataOfCurrentVMR()");
    return answer("znGetVTCIntDataOfCurrentVMR", scripted().shorts.empty() ? nullptr : scripted().shorts.data());
}

// --- regions and design matrices ------------------------------------------------------------------------------------

ZN_HOST_FUNCTION int znLoadVOIs(const char* fileName) {
    const Call entered(call("znLoadVOIs", {fileName}));
    return answer("znLoadVOIs", scripted().loadsVois ? 1 : 0);
}

ZN_HOST_FUNCTION int znGetVOIs(VoiSetHeader* header) {
    const Call entered("znGetVOIs()");
    header->count = static_cast<int>(scripted().vois.size());
    header->coordinateSpace = scripted().voiSpace;
    change(scripted().misbehaviour.voiSet, *header);
    return answer("znGetVOIs", scripted().hasVois ? 1 : 0);
}

ZN_HOST_FUNCTION int* znGetVOI(int index, VoiHeader* header) {
    const Call entered(call("znGetVOI", {number(index)}));
    static std::vector<int> none;
    const auto i = static_cast<std::size_t>(index);
    auto& voi = i < scripted().vois.size() ? scripted().vois[i] : none;
    header->voxels = static_cast<int>(voi.size() / 3);
    change(scripted().misbehaviour.voi, *header);
    return answer("znGetVOI", voi.data());
}

ZN_HOST_FUNCTION void znClearDesignMatrix() {
    const Call entered("znClearDesignMatrix()");
}

ZN_HOST_FUNCTION int znLoadSingleStudyGLMDesignMatrix(const char* fileName) {
    const Call entered(call("znLoadSingleStudyGLMDesignMatrix", {fileName}));
    return answer("znLoadSingleStudyGLMDesignMatrix", scripted().loadsDesignMatrix ? 1 : 0);
}

ZN_HOST_FUNCTION float* znGetPredictor(int index) {
    const Call entered(call("znGetPredictor", {number(index)}));
    const auto i = static_cast<std::size_t>(index);
    return answer("znGetPredictor", i < scripted().predictors.size() ? scripted().predictors[i].data() : nullptr);
}

// --- volume maps ----------------------------------------------------------------------------------------------------

ZN_HOST_FUNCTION void znDeleteNRVMPsOfCurrentVMR() {
    const Call entered("znDeleteNRVMPsOfCurrentVMR()");
    scripted().maps.clear();
}

ZN_HOST_FUNCTION void znCreateNRVMPsForCurrentVMR(int maps, int timePoints, int parameters, NRVMPsHeader* header) {
    const Call entered(call("znCreateNRVMPsForCurrentVMR", {number(maps), number(timePoints), number(parameters)}));
    auto& h = scripted();
    std::copy(std::begin(header->boundingBox), std::end(header->boundingBox), h.mapBox.begin());
    h.mapBox[6] = header->resolution;

    const auto size = [&](std::size_t axis) {
        return static_cast<std::size_t>((h.mapBox[2 * axis + 1] - h.mapBox[2 * axis]) / h.mapBox[6]);
    };
    ScriptedMap map;
    if (h.givesMaps) map.voxels.assign(size(0) * size(1) * size(2), -1.0f);
    if (h.givesTimeCourses) map.timeCourse.assign(static_cast<std::size_t>(timePoints), -1.0f);
    if (h.givesParameters) map.parameters.assign(static_cast<std::size_t>(parameters), -1.0f);
    h.maps.assign(static_cast<std::size_t>(maps), map);
}

ZN_HOST_FUNCTION void znGetNRVMPsOfCurrentVMR(NRVMPsHeader* header) {
    const Call entered("znGetNRVMPsOfCurrentVMR()");
    static std::array<char*, 16> names;
    auto& h = scripted();
    *header = NRVMPsHeader{};
    if (!h.givesNames) return change(h.misbehaviour.mapSet, *header);
    header->firstName = buffer(h.setNames[0]);
    header->secondName = buffer(h.setNames[1]);
    header->thirdName = buffer(h.setNames[2]);
    for (std::size_t i = 0; i < names.size(); ++i) names[i] = buffer(h.parameterNames[i]);
    header->parameterNames = names.data();
    change(h.misbehaviour.mapSet, *header);
}

ZN_HOST_FUNCTION void znSetNRVMPsParamsDisplayRange(NRVMPsHeader* header) {
    const Call entered("znSetNRVMPsParamsDisplayRange()");
    std::copy(std::begin(header->parameterDisplayRange), std::end(header->parameterDisplayRange),
              scripted().displayRange.begin());
}

ZN_HOST_FUNCTION float* znGetNRVMPOfCurrentVMR(int index, NRVMPMap* map) {
    const Call entered(call("znGetNRVMPOfCurrentVMR", {number(index)}));
    auto& h = scripted();
    auto& record = h.maps[static_cast<std::size_t>(index)];
    map->name = h.givesNames ? buffer(record.name) : nullptr;
    map->timeCourse = h.givesTimeCourses ? record.timeCourse.data() : nullptr;
    map->parameters = h.givesParameters ? record.parameters.data() : nullptr;
    change(h.misbehaviour.map, *map);
    return answer("znGetNRVMPOfCurrentVMR", h.givesMaps ? record.voxels.data() : nullptr);
}

ZN_HOST_FUNCTION void znSetNRVMPParametersOfCurrentVMR(int index, NRVMPMap* map) {
    const Call entered(call("znSetNRVMPParametersOfCurrentVMR", {number(index)}));
    auto& record = scripted().maps[static_cast<std::size_t>(index)];
    record.type = map->type;
    ++record.timesSet;
}

ZN_HOST_FUNCTION void znSaveNRVMPsOfCurrentVMR(const char* fileName) {
    const Call entered(call("znSaveNRVMPsOfCurrentVMR", {fileName}));
}

// --- matrix products in their plain form ----------------------------------------------------------------------------

namespace {

template <class T> void multiply(const T* a, const T* b, T* r, int m, int n, int k, bool transposeA, bool transposeB) {
    for (long long i = 0; i < m; ++i) {
        for (long long j = 0; j < n; ++j) {
            T sum = 0;
            for (long long l = 0; l < k; ++l) {
                sum += (transposeA ? a[l * m + i] : a[i * k + l]) * (transposeB ? b[j * k + l] : b[l * n + j]);
            }
            r[i * n + j] = sum;
        }
    }
}

template <class T> void multiply(const T* a, const T* x, T* y, int m, int n, bool transpose) {
    std::fill_n(y, transpose ? n : m, T{0});
    for (long long i = 0; i < m; ++i) {
        for (long long j = 0; j < n; ++j) {
            if (transpose) {
                y[j] += a[i * n + j] * x[i];
            } else {
                y[i] += a[i * n + j] * x[j];
            }
        }
    }
}

} // namespace

ZN_HOST_FUNCTION void zn_intel_matrix_matrix_mult_f(const float* a, const float* b, float* r, int m, int n, int k,
                                                    bool transposeA, bool transposeB) {
    const Call entered("zn_intel_matrix_matrix_mult_f()");
    multiply(a, b, r, m, n, k, transposeA, transposeB);
}

ZN_HOST_FUNCTION void zn_intel_matrix_matrix_mult_d(const double* a, const double* b, double* r, int m, int n, int k,
                                                    bool transposeA, bool transposeB) {
    const Call entered(call("zn_intel_matrix_matrix_mult_d",
                            {number(m), number(n), number(k), number(transposeA), number(transposeB)}));
    multiply(a, b, r, m, n, k, transposeA, transposeB);
    if (scripted().misbehaviour.matrixProduct) scripted().misbehaviour.matrixProduct(r, m, n);
}

ZN_HOST_FUNCTION void zn_intel_matrix_vector_mult_f(const float* a, const float* x, float* y, int m, int n,
                                                    bool transpose) {
    const Call entered("zn_intel_matrix_vector_mult_f()");
    multiply(a, x, y, m, n, transpose);
}

// Too many to record one by one.
ZN_HOST_FUNCTION void zn_intel_matrix_vector_mult_d(const double* a, const double* x, double* y, int m, int n,
                                                    bool transpose) {
    const Call entered("zn_intel_matrix_vector_mult_d()", false);
    ++scripted().matrixVectorCalls;
    if (std::any_of(y, y + (transpose ? n : m), [](double value) { return value != 0.0; })) {
        ++scripted().unclearedResults;
    }
    multiply(a, x, y, m, n, transpose);
    if (scripted().afterMatrixVector) scripted().afterMatrixVector(y, transpose ? n : m);
}
