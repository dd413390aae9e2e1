#include "output/component_maps.h"

#include "host/host_api.h"
#include "host/host_text.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>

namespace zn {

namespace {

constexpr int kComponentMap = 12; // the host's map type
constexpr std::array<int, 4> kParameterDisplayRange = {0, 5, 5, 16};

constexpr std::array<const char*, kMapParameters> kParameterNames = {
    "DM pred max",
    "DM pred index",
    "RMS",
    "Spatial Template (max corr)",
    "Spatial Template (VOI index)",
    "Degree of Clustering",
    "Skewness",
    "Kurtosis",
    "Spatial Entropy",
    "1-Lag Autocorr",
    "Temporal Entropy",
    "Power Spectrum Band 1",
    "Power Spectrum Band 1", // On purpose: the value is that of band 2, the name repeats band 1.
    "Power Spectrum Band 3",
    "Power Spectrum Band 4",
    "Power Spectrum Band 5",
};

// The host's name buffers are assumed to hold as many characters as its text buffers.
void copyText(const char* text, char* hostBuffer) {
    if (!hostBuffer) return;
    const std::size_t length = std::min(std::strlen(text), kHostTextSize - 1);
    std::memcpy(hostBuffer, text, length);
    hostBuffer[length] = '\0';
}

void createMaps(const VtcHeader& vtc, const ComponentResults& results, NRVMPsHeader& header) {
    const int box[6] = {vtc.xStart, vtc.xEnd, vtc.yStart, vtc.yEnd, vtc.zStart, vtc.zEnd};
    std::copy(std::begin(box), std::end(box), header.boundingBox);
    header.resolution = vtc.resolution;
    host().znCreateNRVMPsForCurrentVMR(results.components, results.volumes, kMapParameters, &header);
}

void setDisplayRange(NRVMPsHeader& header) {
    std::copy(kParameterDisplayRange.begin(), kParameterDisplayRange.end(), header.parameterDisplayRange);
    host().znSetNRVMPsParamsDisplayRange(&header);
}

void nameMapSet(const MapSetNames& names, const NRVMPsHeader& header) {
    copyText(names.vtcFile, header.firstName);
    copyText(names.vtcName, header.secondName);
    copyText(names.voiFile, header.thirdName);
    if (!header.parameterNames) return;
    for (std::size_t i = 0; i < kParameterNames.size(); ++i) copyText(kParameterNames[i], header.parameterNames[i]);
}

struct SubjectLabel {
    bool given;
    HostText text;
};

SubjectLabel askForLabel() {
    SubjectLabel label{};
    host().znStopBusyCursor();
    label.given =
        host().znGetTextInput("Please enter subject/session label (cancel to skip):", "", label.text.data()) > 0;
    terminate(label.text);
    host().znShowBusyCursor();
    return label;
}

// A label too long for the name is truncated, so that the component's number stays readable.
void nameMap(const SubjectLabel& label, int number, char* hostBuffer) {
    char ending[32];
    HostText name{};
    if (label.given) {
        const int endingLength = std::snprintf(ending, sizeof ending, ": IC%i", number);
        const int room = static_cast<int>(kHostTextSize) - 1 - static_cast<int>(std::strlen("Subject ")) - endingLength;
        std::snprintf(name.data(), name.size(), "Subject %.*s%s", room, label.text.data(), ending);
    } else {
        std::snprintf(name.data(), name.size(), "IC %i", number);
    }
    copyText(name.data(), hostBuffer);
}

void fillVoxels(const ComponentResults& results, int component, float* voxels) {
    const float* source = results.maps[component];
    const long long gridVoxels = static_cast<long long>(results.gridX) * results.gridY * results.gridZ;
    if (!results.mask) {
        std::copy(source, source + gridVoxels, voxels);
        return;
    }
    for (long long g = 0; g < gridVoxels; ++g) voxels[g] = results.mask[g] > 0 ? *source++ : 0.0f;
}

void fillMap(const ComponentResults& results, int component, const NRVMPMap& map) {
    if (map.timeCourse) {
        for (int t = 0; t < results.volumes; ++t) map.timeCourse[t] = results.timeCourses[t][component];
    }
    if (map.parameters) {
        float* next = map.parameters;
        for (const float* parameter : results.parameters) *next++ = parameter[component];
        for (int band = 0; band < kPowerBands; ++band) *next++ = results.bands[component][band];
    }
}

} // namespace

void handMapsToHost(const VtcHeader& vtc, const ComponentResults& results, const MapSetNames& names) {
    const auto header = std::make_unique<NRVMPsHeader>();
    const auto map = std::make_unique<NRVMPMap>();

    host().znDeleteNRVMPsOfCurrentVMR();
    createMaps(vtc, results, *header);
    host().znGetNRVMPsOfCurrentVMR(header.get());
    setDisplayRange(*header);
    nameMapSet(names, *header);

    const SubjectLabel label = askForLabel();
    for (int i = 0; i < results.components; ++i) {
        *map = NRVMPMap{};
        float* voxels = host().znGetNRVMPOfCurrentVMR(i, map.get());
        nameMap(label, i + 1, map->name);
        map->type = kComponentMap;
        if (voxels) fillVoxels(results, i, voxels);
        fillMap(results, i, *map);
        host().znSetNRVMPParametersOfCurrentVMR(i, map.get());
    }
}

} // namespace zn
