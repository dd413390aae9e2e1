#include "output/rtc_file.h"

#include "output/text_file.h"

namespace zn {

namespace {

void writeCount(TextFile& file, const char* label, int count) {
    file.text(label);
    file.field(count, 0);
    file.endLine();
}

} // namespace

void writeRtcDesignMatrix(const char* fileName, float* const* timeCourses, int dataPoints, int predictors) {
    TextFile file(fileName);
    file.text("FileVersion:     2");
    file.endLine();
    file.text("Type:            DesignMatrix");
    file.endLine();
    writeCount(file, "NrOfPredictors:  ", predictors);
    writeCount(file, "NrOfDataPoints:  ", dataPoints);
    file.endLine();

    for (int i = 1; i <= predictors; ++i) {
        file.text("\"TC");
        file.field(i, 0);
        file.text("\" ");
    }
    file.endLine();

    for (int t = 0; t < dataPoints; ++t) {
        for (int j = 0; j < predictors; ++j) {
            file.field(timeCourses[t][j], 5);
            file.blank();
        }
        file.endLine();
    }
}

} // namespace zn
