#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace zn::headless {

/// The page of a run while it is put together: the template with the run's data inserted before the end of its body.
/// Each block is one script element, compressed and in base64, which the page unpacks when it needs it:
///
///   <script type="text/plain" data-block="map-0">H4sIAAAA...</script>
class ReportPage {
public:
    /// Reads the template. Throws Failure (kOther) when it is missing or lacks the placeholder for the data.
    explicit ReportPage(const std::filesystem::path& templateFile);

    void add(std::string_view name, std::span<const std::byte> bytes);
    void add(std::string_view name, std::string_view text);
    /// A block whose packedText() is at hand.
    void addPacked(std::string_view name, std::string_view packed);

    /// Bytes of the blocks so far.
    std::size_t size() const { return blocks_.size(); }

    /// Throws Failure (kOther) when it cannot be written completely.
    void write(const std::filesystem::path& file) const;

private:
    std::string before_;
    std::string blocks_;
    std::string after_;
};

/// What the script element of a block contains: the bytes compressed and in base64.
std::string packedText(std::span<const std::byte> bytes);

/// The templates: of the page of a run, of that of a study, and of that of a group analysis.
inline constexpr char kRunTemplate[] = "report-template.html";
inline constexpr char kStudyTemplate[] = "study-template.html";
inline constexpr char kGroupTemplate[] = "group-template.html";

/// A template that belongs to the command: in the same folder, in share/znica of the same prefix, or in the build
/// folder. Empty when there is none.
std::filesystem::path findReportTemplate(const char* name = kRunTemplate);

} // namespace zn::headless
