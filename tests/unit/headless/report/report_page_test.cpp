#include "headless/report/report_page.h"

#include "files.h"
#include "headless/failure/failure.h"

#include <gmock/gmock.h>

namespace zn::test {

using namespace headless;

namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class ReportPageTest : public testing::Test {
protected:
    fs::path file(const char* name, const std::string& text) {
        writeFile(folder / name, text);
        return folder / name;
    }

    TemporaryFolder folder;
};

TEST_F(ReportPageTest, InsertsBlocksAtThePlaceholder) {
    ReportPage page(file("template.html", "<body><!-- the data of the run --></body>"));
    page.add("mask", std::string_view("abc"));
    page.write(folder / "report.html");
    const std::string text = textOf(folder / "report.html");
    EXPECT_THAT(text, StartsWith("<body><script type=\"text/plain\" data-block=\"mask\">H4sI")); // gzip in base64
    EXPECT_THAT(text, EndsWith("</script>\n</body>"));
}

TEST_F(ReportPageTest, LeavesNothingBehindWhenItCannotBeWritten) {
    const ReportPage page(file("template.html", "<!-- the data of the run -->"));
    fs::create_directory(folder / "report.html"); // in the way
    fs::create_directory(folder / "report.html/full");
    EXPECT_THROW(page.write(folder / "report.html"), Failure);
    EXPECT_THAT(namesIn(folder.path()), testing::ElementsAre("report.html", "template.html"));
}

TEST_F(ReportPageTest, RefusesATemplateWithoutAPlaceholder) {
    try {
        ReportPage page(file("template.html", "<body></body>"));
        FAIL() << "accepted";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.status(), ExitStatus::kOther);
        EXPECT_THAT(failure.what(), HasSubstr("template.html is not a report template"));
    }
}

} // namespace
} // namespace zn::test
