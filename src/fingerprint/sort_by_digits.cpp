#include "fingerprint/sort_by_digits.h"

#include "numeric/array_owners.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace zn {

namespace {

using Key = std::uint32_t;

constexpr int kDigits = 3;
constexpr int kBits = 11; // of a digit; the tables of all three stay in the first-level cache
constexpr std::size_t kValues = 1 << kBits;

constexpr Key kSign = 0x80000000u; // also the bits of -0
constexpr Key kInfinityBits = 0x7f800000u;

// std::bit_cast, which some standard libraries still lack.
Key bitsOf(float value) {
    Key bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// A number whose order is that of the values.
Key keyOf(float value) {
    const Key bits = bitsOf(value);
    return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

std::size_t digitOf(Key key, int digit) {
    return key >> (digit * kBits) & (kValues - 1);
}

bool hasOneOrder(int n, const float* values) {
    bool anyNaN = false;
    bool anyZero = false;
    bool anyNegativeZero = false;
    for (int i = 0; i < n; ++i) {
        const Key bits = bitsOf(values[i]);
        anyNaN |= (bits & ~kSign) > kInfinityBits;
        anyZero |= bits == 0;
        anyNegativeZero |= bits == kSign;
    }
    return !anyNaN && !(anyZero && anyNegativeZero);
}

// How often each digit has each value.
struct Counts {
    Key of[kDigits][kValues] = {};

    Counts(int n, const float* values) {
        for (int i = 0; i < n; ++i) {
            const Key key = keyOf(values[i]);
            for (int digit = 0; digit < kDigits; ++digit) ++of[digit][digitOf(key, digit)];
        }
    }
};

// Moves the values to the order of one digit, those with the same digit in the order in which they were. The counts of
// the digit become the ends of its groups.
void moveByDigit(int n, const float* from, int digit, Key* counts, float* to) {
    Key before = 0;
    for (std::size_t value = 0; value < kValues; ++value) before += std::exchange(counts[value], before);
    for (int i = 0; i < n; ++i) to[counts[digitOf(keyOf(from[i]), digit)]++] = from[i];
}

} // namespace

bool sortByDigits(int n, float* values) {
    float* first = values + 1;
    if (!hasOneOrder(n, first)) return false;
    Counts counts(n, first);
    const OffsetVector<float> other(0, n - 1);
    moveByDigit(n, first, 0, counts.of[0], other.get());
    moveByDigit(n, other.get(), 1, counts.of[1], first);
    moveByDigit(n, first, 2, counts.of[2], other.get());
    std::copy(other.get(), other.get() + n, first);
    return true;
}

} // namespace zn
