#include "attack/faults/snapshot.h"

#include "files.h"

#include <array>
#include <regex>

#include <nlohmann/json.hpp>
#include <zlib.h>

namespace zn::test {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

Json recordWithoutTimes(Json record) {
    for (const char* name : {"ElapsedSeconds", "PeakMemoryBytes", "PredictedPeakMemoryBytes"}) record.erase(name);
    if (record.contains("Components")) {
        for (Json& component : record["Components"]) component.erase("ElapsedSeconds");
    }
    return record;
}

std::string decoded(const std::string& text) {
    static const std::string kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    unsigned pending = 0;
    int bits = 0;
    for (const char c : text) {
        const std::size_t digit = kDigits.find(c);
        if (digit == std::string::npos) continue;
        pending = (pending << 6U | static_cast<unsigned>(digit)) & 0xFFFFFFU;
        bits += 6;
        if (bits < 8) continue;
        bits -= 8;
        bytes += static_cast<char>(pending >> static_cast<unsigned>(bits) & 0xFFU);
    }
    return bytes;
}

std::string inflated(const std::string& bytes) {
    z_stream stream{};
    inflateInit2(&stream, 15 + 32);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    std::string text;
    std::array<char, 4096> piece{};
    int result = Z_OK;
    while (result == Z_OK) {
        stream.next_out = reinterpret_cast<Bytef*>(piece.data());
        stream.avail_out = piece.size();
        result = inflate(&stream, Z_NO_FLUSH);
        text.append(piece.data(), piece.size() - stream.avail_out);
    }
    inflateEnd(&stream);
    return result == Z_STREAM_END ? text : "damaged";
}

// The block with the run's record, decoded in place of its digits.
std::string pageWithoutTimes(std::string page) {
    const std::string start = "data-block=\"run\">";
    const std::size_t at = page.find(start);
    if (at == std::string::npos) return page;
    const std::size_t first = at + start.size();
    const std::size_t length = page.find('<', first) - first;
    Json run = Json::parse(inflated(decoded(page.substr(first, length))), nullptr, false);
    if (run.is_object()) run["decomposition"] = recordWithoutTimes(run["decomposition"]);
    return page.replace(first, length, run.dump());
}

std::string logWithoutTimes(const std::string& log) {
    static const std::regex kTimes(R"(Memory: about .*|elapsed time: \d+)");
    return std::regex_replace(log, kTimes, "(varies)");
}

} // namespace

Snapshot snapshotOf(const fs::path& folder) {
    Snapshot result;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string name = entry.path().lexically_relative(folder).string();
        if (entry.is_directory()) {
            result[name + "/"];
        } else {
            result[name] = textOf(entry.path());
        }
    }
    return result;
}

void restore(const fs::path& folder, const Snapshot& snapshot) {
    const Snapshot now = snapshotOf(folder);
    for (auto entry = now.rbegin(); entry != now.rend(); ++entry) { // contents before their folder
        if (!snapshot.contains(entry->first)) fs::remove_all(folder / entry->first);
    }
    for (const auto& [name, bytes] : snapshot) {
        const auto found = now.find(name);
        if (name.ends_with('/')) {
            fs::create_directory(folder / name);
        } else if (found == now.end() || found->second != bytes) {
            writeFile(folder / name, bytes);
        }
    }
}

Snapshot below(const Snapshot& snapshot, const std::string& place) {
    Snapshot result;
    for (const auto& [name, bytes] : snapshot) {
        if (name == place) result[""] = bytes;
        if (name.starts_with(place + "/") && name.size() > place.size() + 1) {
            result[name.substr(place.size() + 1)] = bytes;
        }
    }
    return result;
}

Snapshot withoutTimes(const Snapshot& snapshot) {
    Snapshot result = snapshot;
    for (auto& [name, bytes] : result) {
        if (name.ends_with("_decomposition.json")) {
            const Json record = Json::parse(bytes, nullptr, false);
            bytes = record.is_object() ? recordWithoutTimes(record).dump() : "damaged";
        }
        if (name.ends_with("log.txt")) bytes = logWithoutTimes(bytes);
        if (name.ends_with("report.html")) bytes = pageWithoutTimes(bytes);
    }
    return result;
}

bool isLeftover(const std::string& path) {
    static const std::regex kHidden(R"((^|/)\.[^/]+\.unfinished-[0-9a-f]{8}-\d+-\d+(/|$))");
    return path.find(".unfinished-") != std::string::npos && std::regex_search(path, kHidden);
}

} // namespace zn::test
