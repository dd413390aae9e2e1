#pragma once

#include <limits>
#include <string>
#include <vector>

namespace zn::test {

/// Integers at the limits of their type, of the plug-in and of a small VTC with 12 volumes and 240 voxels.
inline std::vector<int> extremeIntegers() {
    using Limits = std::numeric_limits<int>;
    return {Limits::min(),
            Limits::min() + 1,
            -65536,
            -1000,
            -1,
            0,
            1,
            2,
            3,
            7,
            11,
            12,
            13,
            240,
            241,
            255,
            256,
            1000,
            32767,
            65536,
            5'000'000,
            5'000'001,
            Limits::max() - 1,
            Limits::max()};
}

template <class T> std::vector<T> extremeNumbers() {
    using Limits = std::numeric_limits<T>;
    std::vector<T> numbers = {Limits::quiet_NaN(), Limits::signaling_NaN()};
    for (const T size :
         {T{0}, Limits::denorm_min(), Limits::min(), T{1e-20f}, T{1}, T{1e20f}, Limits::max(), Limits::infinity()}) {
        numbers.push_back(size);
        numbers.push_back(-size);
    }
    return numbers;
}

/// Texts as a host may hand them out; none of them names a folder, so that files stay in the current one.
inline std::vector<std::string> extremeTexts() {
    return {"",
            "x",
            ".vtc",
            "a.vtc",
            std::string(255, 'n'),
            std::string(256, 'n'),   // fills the whole buffer, without a terminating zero
            "\xff\xfe\x80\xc3(.vtc", // not UTF-8
            "%s%n%d%100000f.vtc",
            "line\nend\ttab\x01\x1b[31m.vtc",
            "'\"`$(touch x);&|*?.vtc",
            "..vtc",
            " "};
}

} // namespace zn::test
