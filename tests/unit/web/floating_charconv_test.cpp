#include "web/engine/standard/floating_charconv.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

// Bit patterns of all kinds, and the values that tables are full of.
template <class Real, class Bits, class Check> void forManyValues(Check check) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const auto bits = static_cast<Bits>(random());
        Real value;
        std::memcpy(&value, &bits, sizeof value);
        check(value);
    }
    std::normal_distribution<double> normal(0.0, 1000.0);
    for (int i = 0; i < 20000; ++i) check(static_cast<Real>(normal(random)));
    using Limits = std::numeric_limits<Real>;
    for (const double value : {0.0, -0.0, 1.0, 0.1, 100000.0, 123456.0, 1e22, 1e-5, 0.0001})
        check(static_cast<Real>(value));
    for (const Real value : {Limits::max(), Limits::lowest(), Limits::min(), Limits::denorm_min(), Limits::infinity(),
                             -Limits::infinity()}) {
        check(value);
    }
}

template <class... Arguments> std::string written(Arguments... arguments) {
    char text[400];
    return {text, zn::web::write(text, text + sizeof text, arguments...).ptr};
}

template <class... Arguments> std::string expected(Arguments... arguments) {
    char text[400];
    return {text, std::to_chars(text, text + sizeof text, arguments...).ptr};
}

TEST(FloatingCharconv, WritesTheShortestTextAsTheStandardLibraryDoes) {
    forManyValues<double, std::uint64_t>([](double value) {
        if (!std::isnan(value)) {
            EXPECT_EQ(written(value), expected(value));
        }
    });
    forManyValues<float, std::uint32_t>([](float value) {
        if (!std::isnan(value)) {
            EXPECT_EQ(written(value), expected(value));
        }
    });
}

TEST(FloatingCharconv, WritesAGivenPrecisionAsTheStandardLibraryDoes) {
    forManyValues<double, std::uint64_t>([](double value) {
        if (std::isnan(value)) return;
        EXPECT_EQ(written(value, std::chars_format::general, 6), expected(value, std::chars_format::general, 6));
        EXPECT_EQ(written(value, std::chars_format::fixed, 6), expected(value, std::chars_format::fixed, 6));
        EXPECT_EQ(written(value, std::chars_format::scientific, 3), expected(value, std::chars_format::scientific, 3));
    });
}

TEST(FloatingCharconv, SaysThatATextIsTooLong) {
    char text[3];
    EXPECT_EQ(zn::web::write(text, text + sizeof text, 0.125).ec, std::errc::value_too_large);
}

TEST(FloatingCharconv, ReadsAndRefusesAsTheStandardLibraryDoes) {
    for (const std::string text :
         {"1",  "-1.5", "1e3", "1e",   "1e+",   ".5",  "5.",   ".",   "-",     "",    "+1",
          " 1", "0x10", "inf", "-inf", "1e400", "1,5", "1.5x", "--1", "1e-3 ", "n/a", "infinity"}) {
        const char* end = text.data() + text.size();
        double value = 7.0;
        double wanted = 7.0;
        const auto result = zn::web::read(text.data(), end, value);
        const auto reference = std::from_chars(text.data(), end, wanted);
        EXPECT_EQ(result.ec, reference.ec) << text;
        EXPECT_EQ(result.ptr - text.data(), reference.ptr - text.data()) << text;
        EXPECT_EQ(value, wanted) << text;
    }
}

} // namespace
