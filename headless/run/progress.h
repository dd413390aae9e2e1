#pragma once

#include "headless/run/stopwatch.h"

#include <string>
#include <string_view>

namespace zn::headless {

/// The progress of a run on standard output: a redrawn bar on a terminal, otherwise one line per stage.
///
/// Everything is derived from what the host sees of the plug-in: its log lines open the stages (covariance,
/// eigenvalues, components, fingerprint) and report the components with their iterations; for the current component,
/// the products with a transposed matrix count its iterations. The symmetric estimate, in which all components are
/// found at once, reports its searches itself. The remaining time is the mean time per component so far times the
/// number of components left; it is not shown before the first component. A bar is never wider than the terminal.
class Progress {
public:
    enum class Display { kNone, kLines, kBar };

    /// kBar on a terminal that can redraw a line, otherwise kLines.
    static Display suitable();

    explicit Progress(Display display) : display_(display) {}
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Sets the number of components that the plug-in will extract.
    void expect(int components) { components_ = components; }
    /// Opens a stage of the command itself: "reading", "writing".
    void stage(std::string_view name);
    void logLine(std::string_view line);
    void vectorProduct(bool transposed);
    /// Iterations so far of a search for all components at once; each search is a stage of its own.
    void searching(std::string_view search, int iterations);
    /// Removes the bar from the screen.
    void clear();

private:
    void componentFound(int iterations);
    void draw();
    std::string componentText(int number, int iterations) const;
    std::string text() const;

    Display display_;
    int components_ = 0;
    int found_ = 0;
    int iterations_ = 0; // of the current component
    bool extracting_ = false;
    bool drawn_ = false;
    std::string stage_;
    Stopwatch sinceStage_;
    Stopwatch sinceDrawing_;
};

} // namespace zn::headless
