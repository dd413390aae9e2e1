#include "headless/run/run_control.h"

#include "headless/cli/number_checks.h"

#include <limits>

namespace zn::headless {

void addRunControl(CLI::App& command, RunControl& control) {
    command.add_option("--seed", control.seed, "replay the run that recorded this seed (new)")
        ->check(wholeNumber(std::numeric_limits<std::uint32_t>::max()))
        ->type_name("N");
    command.add_option("--threads", control.threads, "threads of the matrix products (all)")
        ->check(CLI::Range(1, 1024).description(""))
        ->type_name("N");
    command.add_option("--repeats", control.repeats, "runs to judge the components' stability by (1)")
        ->check(CLI::Range(1, 1000).description(""))
        ->type_name("R");
    auto* quiet = command.add_flag("--quiet", control.quiet, "print nothing but errors");
    command.add_flag("--verbose", control.verbose, "print the plug-in's log as well")->excludes(quiet);
    command.add_flag("!--no-report", control.report, "leave out report.html");
    command.add_flag("--keep-partial", control.keepPartial, "keep the files of a run that fails");
}

} // namespace zn::headless
