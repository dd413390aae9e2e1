#include "headless/group/steps/rows_file.h"

#include "headless/compression/checksum.h"
#include "headless/failure/failure.h"
#include "headless/text/input_file.h"

#include <algorithm>
#include <fstream>
#include <span>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

[[noreturn]] void refuse(const fs::path& file) {
    refuseFile(file, "does not match its record; repeat the step that wrote it with --force.");
}

std::string checksumOf(const GroupRows& rows) {
    Checksum checksum;
    checksum.add(std::as_bytes(std::span(rows.values)));
    return checksum.text();
}

} // namespace

Json writeRows(const fs::path& file, const GroupRows& rows) {
    const auto bytes = std::as_bytes(std::span(rows.values));
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) {
        throw Failure(ExitStatus::kOther,
                      file.string() + " cannot be written; check the permissions and the free disk space.");
    }
    return {{"Rows", rows.count()},
            {"Voxels", rows.voxels},
            {"Eigenvalues", rows.eigenvalues},
            {"SumOfSquares", rows.squares},
            {"Checksum", checksumOf(rows)}};
}

GroupRows readRows(const fs::path& file, const Json& record, int most) {
    requireReadable(file);
    GroupRows rows;
    try {
        rows.voxels = record.at("Voxels");
        rows.eigenvalues = record.at("Eigenvalues").get<std::vector<double>>();
        rows.squares = record.at("SumOfSquares");
    } catch (const Json::exception&) {
        refuse(file);
    }
    const std::int64_t stored = std::int64_t{4} * rows.voxels * rows.count();
    if (rows.voxels < 1 || static_cast<std::int64_t>(fs::file_size(file)) != stored) refuse(file);
    const bool whole = most >= rows.count();
    rows.eigenvalues.resize(static_cast<std::size_t>(std::min(rows.count(), most)));
    rows.values.resize(static_cast<std::size_t>(rows.voxels) * rows.eigenvalues.size());
    std::ifstream stream(file, std::ios::binary);
    stream.read(reinterpret_cast<char*>(rows.values.data()), static_cast<std::streamsize>(4 * rows.values.size()));
    if (!stream || (whole && record.at("Checksum") != checksumOf(rows))) refuse(file);
    return rows;
}

} // namespace zn::headless
