#include "headless/group/steps/run_problems.h"

#include "headless/group/steps/odd_runs.h"

namespace zn::headless {

void RunProblems::throwIfAny() const {
    if (sentences_.empty()) return;
    if (sentences_.size() == 1) refuseInput(sentences_.front());
    std::vector<std::string> parts;
    parts.reserve(sentences_.size());
    for (const std::string& sentence : sentences_) {
        parts.push_back(sentence.ends_with('.') ? sentence.substr(0, sentence.size() - 1) : sentence);
    }
    refuseInput(std::to_string(parts.size()) + " runs cannot take part: " + listOfNames(parts) + ".");
}

} // namespace zn::headless
