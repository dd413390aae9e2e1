#include "headless/cli/commands.h"

#include "headless/cli/standard_output.h"
#include "headless/result/component_pairs.h"
#include "headless/text/text_file.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

namespace zn::headless {

namespace {

struct CompareCommand {
    std::filesystem::path a;
    std::filesystem::path b;
    std::filesystem::path out; // empty: the table is only printed
    bool force = false;        // replace `out`
};

// The table must not replace a file of the results that it is made from.
void requireOutside(const std::filesystem::path& folder, const std::filesystem::path& out) {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        if (out.empty() || !std::filesystem::equivalent(entry.path(), out, error)) continue;
        throw Failure(ExitStatus::kUsage, out.string() + " belongs to a result that is compared; name another file.");
    }
}

[[noreturn]] void refuseExisting(const std::filesystem::path& out) {
    throw Failure(ExitStatus::kOther, out.string() + " exists; name another file, or use --force.");
}

// Before anything is computed.
void requireFilePlace(const CompareCommand& options) {
    const std::filesystem::path& out = options.out;
    std::error_code error;
    if (out.empty()) return;
    if (std::filesystem::is_directory(out, error)) {
        throw Failure(ExitStatus::kOther, out.string() + " is a folder; name a file for the table.");
    }
    const std::filesystem::path folder = out.parent_path();
    if (!folder.empty() && !std::filesystem::is_directory(folder, error)) {
        throw Failure(ExitStatus::kOther,
                      out.string() + " cannot be written: the folder " + folder.string() + " does not exist.");
    }
    if (!options.force && std::filesystem::exists(out, error)) refuseExisting(out);
}

void writeTable(const CompareCommand& options, const std::string& table) {
    if (options.force) return replaceTextFile(options.out, table);
    if (!createTextFile(options.out, table)) refuseExisting(options.out); // it has appeared in the meantime
}

ExitStatus compare(const CompareCommand& options, UnfinishedWork& unfinished) {
    requireFilePlace(options);
    for (const std::filesystem::path& folder : {options.a, options.b}) requireOutside(folder, options.out);
    const auto pairs = pairComponents(options.a, options.b);
    const std::string table = pairTable(pairs);
    if (!options.out.empty()) unfinished.deliver([&] { writeTable(options, table); });
    std::printf("%s%s\n", table.c_str(), pairSummary(pairs).c_str());
    requirePrinted();
    return ExitStatus::kDone;
}

} // namespace

void addCompareCommand(CLI::App& app, Action& action) {
    const auto options = std::make_shared<CompareCommand>();
    auto* command =
        app.add_subcommand("compare", "Pair the components of two results by absolute spatial correlation.");
    command->add_option("A", options->a, "folder created by znica run")->required()->type_name("DIR");
    command->add_option("B", options->b, "another one, on the same voxel grid")->required()->type_name("DIR");
    command->add_option("--out", options->out, "also write the table to this file")->type_name("TSV");
    command->add_flag("--force", options->force, "replace the file if it exists");
    command->footer("Example:\n  znica run bold.nii.gz --out a --seed 1\n  znica run bold.nii.gz --out b --seed 2\n"
                    "  znica compare a b\n");
    command->callback([options, &action] {
        action = [options](UnfinishedWork& unfinished) { return compare(*options, unfinished); };
    });
}

} // namespace zn::headless
