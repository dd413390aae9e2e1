#include "headless/run/repetition_time.h"

#include "headless/bids/sidecars.h"
#include "headless/failure/failure.h"
#include "headless/result/result_names.h"
#include "headless/text/input_file.h"
#include "headless/text/short_texts.h"

#include <cmath>
#include <system_error>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Sidecars = std::optional<std::vector<fs::path>>;

constexpr double kShortest = 0.001; // seconds; the host counts in whole milliseconds
constexpr double kLongest = 20.0;
constexpr double kAgreement = 0.001;
constexpr char kHeader[] = "the header";

struct Candidate {
    std::string source;
    double seconds;
};

fs::path sidecarOf(const fs::path& image) {
    return image.parent_path() / (imageStem(image) + ".json");
}

std::string textIfReadable(const fs::path& file) {
    try {
        return readWholeFile(file);
    } catch (const Failure&) {
        return "";
    }
}

// `needed`: without --tr, an unreadable or invalid sidecar is an error rather than a reason to use the header.
std::optional<Candidate> fromSidecar(const fs::path& file, bool needed) {
    std::error_code error;
    if (!fs::exists(fs::symlink_status(file, error))) return std::nullopt;
    const auto json = nlohmann::json::parse(needed ? readWholeFile(file) : textIfReadable(file), nullptr, false);
    const auto found = json.is_object() ? json.find("RepetitionTime") : json.end();
    if (json.is_object() && found == json.end()) return std::nullopt;
    if (json.is_object() && found->is_number()) return Candidate{file.filename().string(), found->get<double>()};
    if (!needed) return std::nullopt;
    throw Failure(ExitStatus::kInput,
                  file.string() +
                      (json.is_object() ? " has a RepetitionTime that is not a number" : " is not a JSON object") +
                      "; fix it, or specify the repetition time with --tr SECONDS.");
}

// The image's own sidecar, then those that it inherits from folders above; the nearest with a repetition time counts.
std::optional<Candidate> fromSidecars(const fs::path& image, const Sidecars& known, bool needed) {
    if (auto own = fromSidecar(sidecarOf(image), needed)) return own; // without listing any folder
    for (const fs::path& file : known ? *known : sidecarsOf(image)) {
        if (auto found = fromSidecar(file, needed)) return found;
    }
    return std::nullopt;
}

std::vector<Candidate> candidates(const std::optional<double>& given, const ImageHeader& functional,
                                  const Sidecars& sidecars) {
    std::vector<Candidate> found;
    if (given) found.push_back({"--tr", *given});
    if (const auto sidecar = fromSidecars(functional.file, sidecars, !given)) found.push_back(*sidecar);
    if (functional.secondsPerVolume) found.push_back({kHeader, *functional.secondsPerVolume});
    return found;
}

} // namespace

RepetitionTime repetitionTime(const std::optional<double>& given, const ImageHeader& functional,
                              const Sidecars& sidecars) {
    const std::vector<Candidate> found = candidates(given, functional, sidecars);
    if (found.empty()) {
        throw Failure(ExitStatus::kInput, functional.file.string() + " has no repetition time in its header and "
                                                                     "no JSON file with one beside or above it; "
                                                                     "specify it with --tr SECONDS.");
    }
    const Candidate& first = found.front();
    if (!(first.seconds >= kShortest && first.seconds <= kLongest)) {
        throw Failure(ExitStatus::kInput, functional.file.string() + " has no usable repetition time: " + first.source +
                                              " says " + secondsText(first.seconds) +
                                              ", which is not between 0.001 and 20 s; specify it with --tr SECONDS.");
    }
    RepetitionTime result{first.seconds, first.source, {}};
    result.perhapsUnset = first.source == kHeader && first.seconds == 1.0 && !functional.timeUnit;
    for (const Candidate& other : found) {
        if (std::fabs(other.seconds - first.seconds) <= kAgreement * (1.0 + 1e-6)) continue; // rounding of decimals
        result.disagreements.push_back("TR: " + first.source + " says " + secondsText(first.seconds) +
                                       " and is used; " + other.source + " says " + secondsText(other.seconds) + ".");
    }
    return result;
}

} // namespace zn::headless
