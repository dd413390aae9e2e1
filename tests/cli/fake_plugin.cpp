// A plug-in that misbehaves, or echoes what the host passes to it, on demand: the environment variable ZN_FAKE_PLUGIN
// selects what execute does. Like any plug-in, it looks up the host's functions by name.
#include "host/nrvmp_records.h"
#include "host/voi_records.h"
#include "host/vtc_header.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <dlfcn.h>
#include <sys/mman.h>
#include <unistd.h>

class TMPluginInterface {
public:
    virtual ~TMPluginInterface() = default;
    virtual bool execute() = 0;
    virtual bool initPlugin() = 0;
};

namespace {

template <class Function> Function* host(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

void log(const std::string& text) {
    host<void(const char*)>("znLogText")(text.c_str());
}
void message(const char* text) {
    host<void(const char*)>("znMessageBox")(text);
}

void echoDialog() {
    char text[256];
    for (int i = 0; i < 5; ++i) {
        host<void(int, char*)>("znGetDlgStringParameter")(i, text);
        log("text " + std::to_string(i) + " [" + text + "]");
    }
    for (int i = 0; i < 10; ++i) {
        log("integer " + std::to_string(i) + " [" + std::to_string(host<int(int)>("znGetDlgIntegerParameter")(i)) +
            "]");
    }
    std::snprintf(text, sizeof text, "float 0 [%g]", double(host<float(int)>("znGetDlgFloatParameter")(0)));
    log(text);
}

void echoData() {
    zn::VtcHeader header;
    host<void(zn::VtcHeader*)>("znGetHeaderOfVTCOfCurrentVMR")(&header);
    char text[512];
    std::snprintf(text, sizeof text, "vtc volumes %d tr %d box %d %d %d %d %d %d resolution %d type %d name %.200s",
                  header.volumes, header.repetitionTime, header.xStart, header.xEnd, header.yStart, header.yEnd,
                  header.zStart, header.zEnd, header.resolution, header.dataType, header.name);
    log(text);
    const short* shorts = host<short*()>("znGetVTCIntDataOfCurrentVMR")();
    const float* floats = host<float*()>("znGetVTCFloatDataOfCurrentVMR")();
    for (int element = 0; element < 6; ++element) {
        const double value = shorts ? shorts[element] : double(floats[element]);
        std::snprintf(text, sizeof text, "%s %d %g", shorts ? "short" : "float", element, value);
        log(text);
    }
}

void echoPrompts() {
    char text[256] = "";
    const int size = host<int(const char*, int, int, int)>("znGetIntegerInput")(
        "Please enter a Cluster size threshold (cancel to skip):", 10, 2, 2000);
    const float z =
        host<float(const char*, float, float, float)>("znGetFloatInput")("Z threshold for maps:", 2.5f, 0.1f, 100.0f);
    const int label = host<int(const char*, const char*, char*)>("znGetTextInput")(
        "Please enter subject/session label (cancel to skip):", "", text);
    char line[600];
    std::snprintf(line, sizeof line, "prompts %d %g %d [%s]", size, double(z), label, text);
    log(line);
}

void echoRegions() {
    host<int(const char*)>("znLoadVOIs")("regions.voi");
    zn::VoiSetHeader set;
    host<int(zn::VoiSetHeader*)>("znGetVOIs")(&set);
    log("regions " + std::to_string(set.count) + " space " + std::to_string(set.coordinateSpace));
    for (int j = 0; j < set.count; ++j) {
        zn::VoiHeader region;
        const int* c = host<int*(int, zn::VoiHeader*)>("znGetVOI")(j, &region);
        for (int v = 0; v < region.voxels; ++v, c += 3) {
            log("region " + std::to_string(j) + ": " + std::to_string(c[0]) + " " + std::to_string(c[1]) + " " +
                std::to_string(c[2]));
        }
    }
}

// A record of exactly `size` bytes, before a page that nobody may touch.
template <class Record> Record* recordOf(std::size_t size) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    auto* pages =
        static_cast<char*>(mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    mprotect(pages + page, page, PROT_NONE);
    return reinterpret_cast<Record*>(pages + page - size);
}

// A whole run with records that end after the last field that the contract names, and with the longest map names.
bool runWithSmallRecords() {
    constexpr std::size_t kName = sizeof "sub-01_task-rest_bold.vtc";
    auto* vtc = recordOf<zn::VtcHeader>((324 + kName + 7) / 8 * 8);
    host<void(zn::VtcHeader*)>("znGetHeaderOfVTCOfCurrentVMR")(vtc);
    log("small volumes " + std::to_string(vtc->volumes) + " name " + vtc->name);
    host<int(const char*)>("znLoadVOIs")("regions.voi");
    auto* set = recordOf<zn::VoiSetHeader>(276);
    host<int(zn::VoiSetHeader*)>("znGetVOIs")(set);
    auto* region = recordOf<zn::VoiHeader>(4);
    host<int*(int, zn::VoiHeader*)>("znGetVOI")(0, region);
    log("small regions " + std::to_string(set->count) + " voxels " + std::to_string(region->voxels));

    auto* header = recordOf<zn::NRVMPsHeader>(400);
    const int box[6] = {vtc->xStart, vtc->xEnd, vtc->yStart, vtc->yEnd, vtc->zStart, vtc->zEnd};
    std::copy_n(box, 6, header->boundingBox);
    header->resolution = vtc->resolution;
    host<void(int, int, int, zn::NRVMPsHeader*)>("znCreateNRVMPsForCurrentVMR")(2, vtc->volumes, 16, header);
    host<void(zn::NRVMPsHeader*)>("znGetNRVMPsOfCurrentVMR")(header);
    for (int i = 0; i < 2; ++i) {
        auto* map = recordOf<zn::NRVMPMap>(104);
        host<float*(int, zn::NRVMPMap*)>("znGetNRVMPOfCurrentVMR")(i, map)[i] = 1.0f;
        std::strcpy(map->name, std::string(269, 'x').c_str());
        map->type = 12;
        host<void(int, zn::NRVMPMap*)>("znSetNRVMPParametersOfCurrentVMR")(i, map);
    }
    host<void(const char*)>("znSaveNRVMPsOfCurrentVMR")("maps.vmp");
    return true;
}

bool echoEverything() {
    echoDialog();
    echoData();
    echoPrompts();
    echoRegions();
    return false;
}

class FakePlugin : public TMPluginInterface {
public:
    bool initPlugin() override {
        if (behaviour() == "refuse to start") return message("No licence for Mondays."), false;
        return true;
    }

    bool execute() override {
        if (behaviour() == "message") return message("First box"), message("The data are\nnot to my taste."), false;
        if (behaviour() == "silence") return false;
        if (behaviour() == "no maps") return true;
        if (behaviour() == "memory") {
            message("Working memory full. Exiting plugin.");
            log("// Plugin > Working memory full. Exiting plugin.");
            return true;
        }
        if (behaviour() == "none found") return log("// Plugin>  No components found. Exiting plugin."), true;
        if (behaviour() == "exit") std::exit(1);
        if (behaviour() == "killed") std::raise(SIGKILL);
        if (behaviour() == "echo") return echoEverything();
        if (behaviour() == "small records") return runWithSmallRecords();
        if (behaviour() == "unavailable") {
            host<void*()>("znPlotBars")();
            host<void*()>("znPlotBars")();
            return false;
        }
        return false;
    }

private:
    static std::string behaviour() {
        const char* text = std::getenv("ZN_FAKE_PLUGIN");
        return text ? text : "";
    }
};

} // namespace

extern "C" {
TMPluginInterface* createPlugin() {
    return new FakePlugin;
}
const char* getPluginName() {
    return "Fake";
}
const char* getPluginDescription() {
    return "A plug-in for tests";
}
const char* getAuthor() {
    return "tests";
}
const char* getHelpFile() {
    return "";
}
const char* getPluginVersion() {
    return "0";
}
const char* getGUIScript() {
    return "";
}
}
