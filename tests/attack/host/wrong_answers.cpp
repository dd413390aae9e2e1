#include "attack/host/wrong_answers.h"

#include "attack/host/extreme_values.h"

#include <limits>

namespace zn::test {

namespace {

template <class T> using Place = std::function<void(ScriptedHost& host, T value)>;

template <class T>
void addAll(std::vector<WrongAnswer>& answers, const std::string& name, const std::vector<T>& values, Place<T> place) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        const T value = values[i];
        answers.push_back({name + " has extreme value " + std::to_string(i),
                           [place, value](ScriptedHost& host) { place(host, value); }});
    }
}

// Changes one kind of answer in addition to what has been changed before.
template <class Hook, class Change> void alsoChange(Hook& hook, Change change) {
    hook = [before = hook, change](auto&&... arguments) mutable {
        if (before) before(arguments...);
        change(arguments...);
    };
}

using HeaderField = std::int32_t VtcHeader::*;

const std::vector<std::pair<const char*, HeaderField>>& headerFields() {
    static const std::vector<std::pair<const char*, HeaderField>> fields = {
        {"validity", &VtcHeader::validity}, {"volumes", &VtcHeader::volumes},
        {"TR", &VtcHeader::repetitionTime}, {"x start", &VtcHeader::xStart},
        {"x end", &VtcHeader::xEnd},        {"y start", &VtcHeader::yStart},
        {"y end", &VtcHeader::yEnd},        {"z start", &VtcHeader::zStart},
        {"z end", &VtcHeader::zEnd},        {"resolution", &VtcHeader::resolution},
        {"data type", &VtcHeader::dataType}};
    return fields;
}

long long voxelsAlong(int start, int end, int resolution) {
    return resolution < 1 ? 0 : (static_cast<long long>(end) - start) / resolution;
}

} // namespace

std::vector<WrongAnswer> wrongIntegers() {
    std::vector<WrongAnswer> answers;
    const auto values = extremeIntegers();
    for (int index : {0, 3, 5, 6, 7, 8, 9}) {
        addAll<int>(answers, "dialog integer " + std::to_string(index), values,
                    [index](ScriptedHost& host, int value) { host.dialogIntegers[index] = value; });
    }
    for (const auto& [name, field] : headerFields()) {
        addAll<int>(answers, std::string("VTC header's ") + name, values,
                    [field = field](ScriptedHost& host, int value) { host.header.*field = value; });
    }
    addAll<int>(answers, "VTC header's unread field", values, [](ScriptedHost& host, int value) {
        host.header.unread[0] = host.header.unread[1] = value;
        for (char& byte : host.header.hostFields) byte = static_cast<char>(value);
    });
    addAll<int>(answers, "cluster size", values, [](ScriptedHost& host, int value) { host.clusterSize = value; });
    addAll<int>(answers, "coordinate space", values, [](ScriptedHost& host, int value) { host.voiSpace = value; });
    addAll<int>(answers, "VOI coordinate", values, [](ScriptedHost& host, int value) { host.vois[0][4] = value; });
    addAll<int>(answers, "number of VOIs", values, [](ScriptedHost& host, int value) {
        // Up to a number for which the host has the memory, or far more than an array can count.
        if (value > 40'000 && value < std::numeric_limits<int>::max() - 1) return;
        alsoChange(host.misbehaviour.voiSet, [value](VoiSetHeader& record) { record.count = value; });
    });
    addAll<int>(answers, "number of VOI voxels", values, [](ScriptedHost& host, int value) {
        if (value > 1) return; // the host has no more
        alsoChange(host.misbehaviour.voi, [value](VoiHeader& record) { record.voxels = value; });
    });
    for (const char* function : {"znGetCurrentVMR", "znLinkVTCToCurrentVMR", "znLoadMaskToCurrentVMR", "znLoadVOIs",
                                 "znGetVOIs", "znLoadSingleStudyGLMDesignMatrix", "znGetTextInput"}) {
        addAll<int>(answers, function, values, [function](ScriptedHost& host, int value) {
            alsoChange(host.misbehaviour.integer, [=](const std::string& called, int& returned) {
                if (called == function) returned = value;
            });
        });
    }
    return answers;
}

std::vector<WrongAnswer> wrongNumbers() {
    std::vector<WrongAnswer> answers;
    const auto values = extremeNumbers<float>();
    const auto doubles = extremeNumbers<double>();
    addAll<float>(answers, "epsilon", values, [](ScriptedHost& host, float value) { host.epsilon = value; });
    addAll<float>(answers, "Z threshold", values, [](ScriptedHost& host, float value) { host.zThreshold = value; });
    addAll<float>(answers, "one value", values, [](ScriptedHost& host, float value) { host.floats[100] = value; });
    addAll<float>(answers, "every 12th value", values, [](ScriptedHost& host, float value) {
        for (std::size_t i = 3; i < host.floats.size(); i += 12) host.floats[i] = value;
    });
    addAll<float>(answers, "every value", values,
                  [](ScriptedHost& host, float value) { std::fill(host.floats.begin(), host.floats.end(), value); });
    addAll<float>(answers, "predictor", values, [](ScriptedHost& host, float value) {
        std::fill(host.predictors[1].begin(), host.predictors[1].end(), value);
    });
    for (const int element : {0, 1, 7}) {
        const std::string which = "element " + std::to_string(element) + " of ";
        addAll<double>(answers, which + "a matrix product", doubles, [element](ScriptedHost& host, double value) {
            alsoChange(host.misbehaviour.matrixProduct, [=](double* r, int rows, int columns) {
                if (element < static_cast<long long>(rows) * columns) r[element] = value;
            });
        });
        addAll<double>(answers, which + "a product with a vector", doubles,
                       [element](ScriptedHost& host, double value) {
                           alsoChange(host.afterMatrixVector, [=](double* y, int length) {
                               if (element < length) y[element] = value;
                           });
                       });
    }
    return answers;
}

std::vector<WrongAnswer> wrongTexts() {
    std::vector<WrongAnswer> answers;
    const auto values = extremeTexts();
    for (std::size_t index = 0; index < 5; ++index) {
        addAll<std::string>(
            answers, "dialog text " + std::to_string(index), values,
            [index](ScriptedHost& host, const std::string& value) { host.dialogStrings[index] = value; });
    }
    addAll<std::string>(answers, "label", values,
                        [](ScriptedHost& host, const std::string& value) { host.label = value; });
    addAll<std::string>(answers, "text in the VTC header", values, [](ScriptedHost& host, const std::string& value) {
        value.copy(host.header.name, sizeof host.header.name);
    });
    answers.push_back({"text in the VTC header never ends", [](ScriptedHost& host) {
                           std::fill(std::begin(host.header.name), std::end(host.header.name), 'n');
                       }});
    return answers;
}

std::vector<WrongAnswer> wrongPointers() {
    std::vector<WrongAnswer> answers;
    for (const char* function :
         {"znGetCurrentVMR", "znGetMaskOfCurrentVMR", "znGetVTCFloatDataOfCurrentVMR", "znGetVTCIntDataOfCurrentVMR",
          "znGetVOI", "znGetPredictor", "znGetNRVMPOfCurrentVMR"}) {
        for (const int call : {0, 1, 2}) {
            answers.push_back({function + std::string(" returns null at call ") + std::to_string(call),
                               [function, call](ScriptedHost& host) {
                                   alsoChange(host.misbehaviour.pointer,
                                              [=, calls = 0](const std::string& called, void*& returned) mutable {
                                                  if (called == function && calls++ == call) returned = nullptr;
                                              });
                               }});
        }
    }
    const auto spoilSet = [&](const std::string& name, auto spoil) {
        answers.push_back({"null in the map set: " + name,
                           [spoil](ScriptedHost& host) { alsoChange(host.misbehaviour.mapSet, spoil); }});
    };
    spoilSet("first name", [](NRVMPsHeader& record) { record.firstName = nullptr; });
    spoilSet("second name", [](NRVMPsHeader& record) { record.secondName = nullptr; });
    spoilSet("third name", [](NRVMPsHeader& record) { record.thirdName = nullptr; });
    spoilSet("parameter names", [](NRVMPsHeader& record) { record.parameterNames = nullptr; });
    for (const int i : {0, 7, 15}) {
        spoilSet("parameter name " + std::to_string(i), [i](NRVMPsHeader& record) {
            if (record.parameterNames) record.parameterNames[i] = nullptr;
        });
    }
    const auto spoilMap = [&](const std::string& name, auto spoil) {
        answers.push_back(
            {"null in a map: " + name, [spoil](ScriptedHost& host) { alsoChange(host.misbehaviour.map, spoil); }});
    };
    spoilMap("name", [](NRVMPMap& record) { record.name = nullptr; });
    spoilMap("time course", [](NRVMPMap& record) { record.timeCourse = nullptr; });
    spoilMap("parameters", [](NRVMPMap& record) { record.parameters = nullptr; });
    return answers;
}

void provideStatedData(ScriptedHost& host) {
    constexpr long long kMostValues = 200'000;
    constexpr int kMostVolumes = 250; // the eigen-decomposition takes the cube of it
    const VtcHeader& h = host.header;
    const long long x = voxelsAlong(h.xStart, h.xEnd, h.resolution);
    const long long y = voxelsAlong(h.yStart, h.yEnd, h.resolution);
    const long long z = voxelsAlong(h.zStart, h.zEnd, h.resolution);
    if (x < 1 || y < 1 || z < 1) return; // none is read
    const bool countable = x <= kMostValues && y <= kMostValues / x && z <= kMostValues / (x * y);
    if (!countable || h.volumes > kMostVolumes || x * y * z * std::max(1, h.volumes) > kMostValues) {
        host.mask.reset();
        host.floats.clear();
        host.shorts.clear();
        return;
    }
    const auto voxels = static_cast<std::size_t>(x * y * z);
    if (host.mask) host.mask->resize(voxels, 1);
    const std::size_t values = voxels * static_cast<std::size_t>(std::max(0, h.volumes));
    const auto sample = host.floats;
    for (std::size_t i = host.floats.size(); i < values; ++i) {
        host.floats.push_back(sample[i % sample.size()] * static_cast<float>(i % 13));
    }
    for (std::size_t i = host.shorts.size(); i < values; ++i) host.shorts.push_back(static_cast<short>(i * i));
    for (auto& predictor : host.predictors) {
        predictor.resize(std::max(predictor.size(), static_cast<std::size_t>(std::max(0, h.volumes))));
    }
}

} // namespace zn::test
