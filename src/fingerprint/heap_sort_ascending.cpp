#include "fingerprint/heap_sort_ascending.h"

#include "fingerprint/sort_by_digits.h"

#include <cstddef>

namespace zn {

namespace {

using Position = std::ptrdiff_t; // four times a 32-bit position overflows 32 bits

constexpr int kFew = 1000; // values for which the tables of digits cost more than they save

constexpr Position kChildren = 4; // node i has the children 4 i + 1 .. 4 i + 4, counted from 0

// Moves the largest of the four values from `first` on to `place`; returns where it was. Values and positions are
// selected side by side, without an unpredictable branch and without reading a value twice.
Position raiseLargestOfFour(float* heap, Position first, Position place) {
    const float a = heap[first];
    const float b = heap[first + 1];
    const float c = heap[first + 2];
    const float d = heap[first + 3];
    const float left = a < b ? b : a;
    const float right = c < d ? d : c;
    const Position leftPosition = first + (a < b ? 1 : 0);
    const Position rightPosition = first + (c < d ? 3 : 2);
    heap[place] = left < right ? right : left;
    return left < right ? rightPosition : leftPosition;
}

Position largestOf(const float* heap, Position first, Position end) {
    Position largest = first;
    for (Position i = first + 1; i < end; ++i) {
        if (heap[largest] < heap[i]) largest = i;
    }
    return largest;
}

// Inserts `value` into the heap at or below the free place `top`, whose subtrees are heaps. The free place first sinks
// to a leaf along the largest children: a value taken from the heap's end usually belongs near the leaves.
void sink(float* heap, Position size, Position top, float value) {
    Position place = top;
    Position child = kChildren * place + 1;
    for (; child + kChildren <= size; child = kChildren * place + 1) {
        place = raiseLargestOfFour(heap, child, place);
    }
    if (child < size) {
        const Position largest = largestOf(heap, child, size);
        heap[place] = heap[largest];
        place = largest;
    }
    while (place > top) {
        const Position parent = (place - 1) / kChildren;
        if (!(heap[parent] < value)) break;
        heap[place] = heap[parent];
        place = parent;
    }
    heap[place] = value;
}

} // namespace

void heapSortAscending(int n, float* values) {
    if (n < 2) return;
    if (n >= kFew && sortByDigits(n, values)) return;
    float* heap = values + 1;
    for (Position top = (n - 2) / kChildren; top >= 0; --top) sink(heap, n, top, heap[top]);
    for (Position last = n - 1; last > 0; --last) {
        const float value = heap[last];
        heap[last] = heap[0];
        sink(heap, last, 0, value);
    }
}

} // namespace zn
