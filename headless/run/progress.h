#pragma once

#include "headless/run/stopwatch.h"

#include <string>
#include <string_view>

namespace zn::headless {

/// Where a run is, on standard output: a bar that is redrawn on a terminal, else a line a stage.
///
/// Everything comes from what the host sees of the plug-in: its log lines open the stages (covariance, eigenvalues,
/// components, fingerprint) and count the components and their iterations; while a component is sought, the products
/// with a transposed matrix count its iterations. The time left is the mean time of a component so far times the
/// components to come, and is not shown before the first. A bar is never wider than the terminal.
class Progress {
public:
    enum class Display { kNone, kLines, kBar };

    /// kBar on a terminal that can redraw a line, else kLines.
    static Display suitable();

    explicit Progress(Display display) : display_(display) {}
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// How many components the plug-in is going to seek.
    void expect(int components) { components_ = components; }
    /// Opens a stage that the command itself goes through: "reading", "writing".
    void stage(std::string_view name);
    void logLine(std::string_view line);
    void vectorProduct(bool transposed);
    /// Takes the bar off the screen.
    void clear();

private:
    void componentFound(int iterations);
    void draw();
    std::string componentText(int number, int iterations) const;
    std::string text() const;

    Display display_;
    int components_ = 0;
    int found_ = 0;
    int iterations_ = 0; // of the component being sought
    bool seeking_ = false;
    bool drawn_ = false;
    std::string stage_;
    Stopwatch sinceStage_;
    Stopwatch sinceDrawing_;
};

} // namespace zn::headless
