#pragma once

#include "host/nrvmp_records.h"
#include "host/voi_records.h"
#include "host/vtc_header.h"

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zn::test {

/// One volume map of the scripted host.
struct ScriptedMap {
    std::string name = std::string(256, '#'); ///< the buffer as the plug-in left it
    int type = 0;
    std::vector<float> voxels;
    std::vector<float> timeCourse;
    std::vector<float> parameters;
    int timesSet = 0; ///< how often the plug-in has set its parameters

    /// Text in the name buffer.
    std::string text() const { return name.substr(0, name.find('\0')); }
};

/// How a test makes the scripted host misbehave. Each of these may be empty; `function` is the name of the function
/// that is called.
struct Misbehaviour {
    /// Called before the function does anything; may throw or change any answer of the host.
    std::function<void(const std::string& function)> beforeCall;
    // Called with what the function is about to return or has filled in, to change it.
    std::function<void(const std::string& function, int& value)> integer;
    std::function<void(const std::string& function, float& value)> number;
    std::function<void(const std::string& function, void*& pointer)> pointer;
    std::function<void(VoiSetHeader& record)> voiSet;
    std::function<void(VoiHeader& record)> voi;
    std::function<void(NRVMPsHeader& record)> mapSet;
    std::function<void(NRVMPMap& record)> map;
    std::function<void(double* r, int rows, int columns)> matrixProduct;
};

/// A host that answers as the test says and records every call in order.
///
/// The functions that the plug-in looks up by name are C functions of this program, which itself has the host's name.
/// They all work on the one object that `scripted()` returns.
struct ScriptedHost {
    // --- answers ----------------------------------------------------------------------------------------------------
    std::array<int, 3> version = {2, 2, 0};
    bool hasVmr = true;
    std::array<std::string, 5> dialogStrings = {"run1.vtc", "", "maps.ica", "", ""};
    std::map<int, int> dialogIntegers = {{0, 1}, {3, 0}, {5, 0}, {6, 1}, {7, 3}, {8, 200}, {9, 3}};
    float epsilon = 1e-4f;
    bool linksVtc = true;
    bool loadsMask = true;
    std::optional<std::vector<unsigned char>> mask; ///< empty: a null pointer
    VtcHeader header{};
    std::vector<float> floats; ///< VTC data; empty: a null pointer
    std::vector<short> shorts; ///< the same as 16-bit integers
    bool loadsVois = true;
    bool hasVois = true;
    int voiSpace = 0;
    std::vector<std::vector<int>> vois; ///< three coordinates per voxel
    bool loadsDesignMatrix = true;
    std::vector<std::vector<float>> predictors;
    int clusterSize = 10;
    float zThreshold = 2.5f;
    std::optional<std::string> label; ///< empty: the prompt is cancelled
    bool givesTimeCourses = true;     ///< false: null pointers in the map records
    bool givesParameters = true;
    bool givesNames = true;
    bool givesMaps = true; ///< false: no voxel array
    /// Called after each matrix-vector product with its result, so that a test can corrupt it.
    std::function<void(double* y, int length)> afterMatrixVector;
    Misbehaviour misbehaviour;

    // --- records ----------------------------------------------------------------------------------------------------
    std::vector<std::string> calls; ///< name and arguments of every call except the matrix-vector products
    int matrixVectorCalls = 0;
    int unclearedResults = 0; ///< of these, the calls whose result was not zeroed before
    std::vector<ScriptedMap> maps;
    std::array<int, 4> displayRange{};
    std::array<int, 7> mapBox{}; ///< bounding box and resolution of the maps
    std::array<std::string, 3> setNames;
    std::array<std::string, 16> parameterNames;

    /// Texts of the log and of the message boxes, in order.
    std::vector<std::string> log() const { return argumentsOf("znLogText"); }
    std::vector<std::string> boxes() const { return argumentsOf("znMessageBox"); }
    std::vector<std::string> argumentsOf(const std::string& function) const;
    /// Names of the calls, without arguments, in order.
    std::vector<std::string> callNames() const;
    /// Whether the busy cursor is shown now.
    bool isBusy() const;

    /// Sets bounding box and resolution for a grid of these sizes with 3 mm VTC voxels.
    void setGrid(int x, int y, int z);
};

/// The one scripted host of this process.
ScriptedHost& scripted();

/// Called when the plug-in enters and leaves the host; for tests that make the plug-in's allocations fail.
extern void (*onHostEntered)();
extern void (*onHostLeft)();

} // namespace zn::test
