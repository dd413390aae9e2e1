// Fuzz target: the JSON file beside an image, from which the repetition time is taken.

#include "attack/fuzz/input.h"

#include "headless/run/repetition_time.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto sidecar = zn::test::inputFile("bold.json", zn::test::textInput(data, size));
    zn::headless::ImageHeader functional;
    functional.file = sidecar.parent_path() / "bold.nii.gz";
    const auto requireUsable = [&](std::optional<double> given) {
        zn::test::mayRefuse([&] {
            const double seconds = zn::headless::repetitionTime(given, functional).seconds;
            zn::test::require(seconds >= 0.001 && seconds <= 20.0, "a repetition time is plausible");
        });
    };
    requireUsable(std::nullopt);
    functional.secondsPerVolume = 2.5;
    requireUsable(std::nullopt);
    requireUsable(2.0);
    return 0;
}
