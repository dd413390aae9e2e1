#include "input/file_names.h"

#include "host/host_api.h"

namespace zn {

namespace {

void read(int index, HostText& text) {
    host().znGetDlgStringParameter(index, text.data());
    terminate(text);
}

Stop reopenDialog() {
    host().znLaunchICADialog();
    return Stop{false};
}

} // namespace

MaybeStop readFileNames(FileNames& names) {
    read(0, names.vtc);
    if (isEmpty(names.vtc)) return reopenDialog();
    read(1, names.mask);
    read(2, names.maps);
    if (isEmpty(names.maps)) return reopenDialog();
    read(3, names.designMatrix);
    read(4, names.vois);
    if (!isEmpty(names.vois)) names.voisLoaded = host().znLoadVOIs(names.vois.data()) != 0;
    return std::nullopt;
}

} // namespace zn
