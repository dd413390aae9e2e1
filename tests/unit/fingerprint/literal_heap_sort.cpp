#include "unit/fingerprint/literal_heap_sort.h"

#include <cstddef>

namespace zn::test {

namespace {

// Of equal children the first; of four, the winners of two pairs are compared.
std::size_t largestChild(const std::vector<float>& heap, std::size_t parent, std::size_t size) {
    const std::size_t first = 4 * parent + 1;
    if (first + 4 <= size) {
        const std::size_t left = heap[first] < heap[first + 1] ? first + 1 : first;
        const std::size_t right = heap[first + 2] < heap[first + 3] ? first + 3 : first + 2;
        return heap[left] < heap[right] ? right : left;
    }
    std::size_t largest = first;
    for (std::size_t i = first + 1; i < size; ++i) {
        if (heap[largest] < heap[i]) largest = i;
    }
    return largest;
}

void insertBelow(std::vector<float>& heap, std::size_t size, std::size_t top, float value) {
    std::size_t place = top;
    while (4 * place + 1 < size) {
        const std::size_t child = largestChild(heap, place, size);
        heap[place] = heap[child];
        place = child;
    }
    while (place > top && heap[(place - 1) / 4] < value) {
        heap[place] = heap[(place - 1) / 4];
        place = (place - 1) / 4;
    }
    heap[place] = value;
}

} // namespace

std::vector<float> literalHeapSort(std::vector<float> heap) {
    for (std::size_t top = heap.size(); top-- > 0;) insertBelow(heap, heap.size(), top, heap[top]);
    for (std::size_t last = heap.size(); last-- > 1;) {
        const float value = heap[last];
        heap[last] = heap[0];
        insertBelow(heap, last, 0, value);
    }
    return heap;
}

} // namespace zn::test
