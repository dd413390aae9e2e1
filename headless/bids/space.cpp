#include "headless/bids/space.h"

#include "headless/bids/word_list.h"
#include "headless/failure/failure.h"

namespace zn::headless {

std::string spaceOf(const BidsName& image) {
    const auto space = image.label("space");
    const auto resolution = image.label("res");
    return space.value_or("func") + (resolution ? ":res-" + *resolution : "");
}

std::string chooseSpace(const std::vector<std::string>& present, const std::string& wanted) {
    std::vector<std::string> fitting;
    for (const std::string& space : present) {
        if (space == wanted) return space;
        if (wanted.empty() || space.starts_with(wanted + ":")) fitting.push_back(space);
    }
    if (fitting.size() == 1) return fitting.front();
    if (fitting.empty()) {
        throw Failure(ExitStatus::kInput,
                      "no image is in the space " + wanted + "; the spaces are " + wordList(present) + ".");
    }
    throw Failure(ExitStatus::kInput, "the images are in the spaces " + wordList(fitting) +
                                          "; choose one with --space, such as --space " + fitting.front() + ".");
}

} // namespace zn::headless
