#include "plugin/host_version.h"
#include "plugin/run_driver.h"

#include "host/host_api.h"

using namespace zn;

namespace {

bool bindAndAnnounce() {
    if (!bindHostApi()) return false; // without the host's functions this cannot be reported

    HostVersion version{};
    host().znGetVersionOfTesmiraZN(&version.major, &version.minor, &version.patch);
    if (!isSupported(version)) {
        host().znMessageBox("Can not execute this plugin - TesmiraZN version 2.2.0 or higher required.");
        return false;
    }
    if (!bindHostMatrixProducts()) {
        host().znMessageBox("Can not execute this plugin - no access to MKL provided.");
        return false;
    }
    bindHostSeparation();
    host().znShowLogTab();
    host().znLogText(" ");
    host().znLogText("// Plugin>  Running ICA Plugin...");
    return true;
}

} // namespace

bool initialisePlugin() noexcept {
    try {
        return bindAndAnnounce();
    } catch (...) {
        return false; // a function of the host threw
    }
}
