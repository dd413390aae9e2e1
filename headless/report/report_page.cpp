#include "headless/report/report_page.h"

#include "headless/compression/gzip.h"
#include "headless/failure/failure.h"
#include "headless/report/base64.h"
#include "headless/text/text_file.h"

#include <fstream>
#include <sstream>
#include <system_error>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPlace = "<!-- the data of the run -->";

} // namespace

ReportPage::ReportPage(const fs::path& templateFile) {
    std::ifstream stream(templateFile, std::ios::binary);
    std::ostringstream read;
    if (stream.is_open() && !(read << stream.rdbuf())) {
        throw Failure(ExitStatus::kOther, templateFile.string() + " cannot be read; check its disk.");
    }
    const std::string text = read.str();
    const std::size_t place = text.rfind(kPlace);
    if (place == std::string::npos) {
        throw Failure(ExitStatus::kOther,
                      templateFile.string() + " is not a report template; rebuild or reinstall znica.");
    }
    before_ = text.substr(0, place);
    after_ = text.substr(place + kPlace.size());
}

void ReportPage::add(std::string_view name, std::span<const std::byte> bytes) {
    addPacked(name, packedText(bytes));
}

void ReportPage::addPacked(std::string_view name, std::string_view packed) {
    blocks_ += "<script type=\"text/plain\" data-block=\"";
    blocks_ += name;
    blocks_ += "\">";
    blocks_ += packed;
    blocks_ += "</script>\n";
}

void ReportPage::add(std::string_view name, std::string_view text) {
    add(name, std::as_bytes(std::span(text.data(), text.size())));
}

void ReportPage::write(const fs::path& file) const {
    replaceTextFile(file, before_ + blocks_ + after_);
}

std::string packedText(std::span<const std::byte> bytes) {
    return base64(gzip(bytes).bytes());
}

fs::path findReportTemplate(const char* name) {
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    for (const char* place : {".", "../share/znica"}) {
        fs::path file = (folder / place / name).lexically_normal();
        if (fs::exists(file, error)) return file;
    }
    return {};
}

} // namespace zn::headless
