// The plug-in reads and writes exactly the memory that the host hands out: all of it touches a page whose access ends
// the process, what it may only read is write-protected, and nothing is aligned beyond the needs of its type.

#include "attack/host/guarded_memory.h"
#include "attack/host/hostile_fixture.h"
#include "attack/host/run_record.h"

#include <array>
#include <cstring>
#include <list>

namespace zn::test {
namespace {

class MemoryBounds : public HostileFixture, public testing::WithParamInterface<GuardedMemory::Edge> {
protected:
    MemoryBounds() {
        host.misbehaviour.pointer = [this](const std::string& function, void*& pointer) { guard(function, pointer); };
        host.misbehaviour.mapSet = [this](NRVMPsHeader& record) {
            for (char** name : {&record.firstName, &record.secondName, &record.thirdName}) lend(*name, kNameSize);
            for (int i = 0; i < 16; ++i) lend(record.parameterNames[i], kNameSize);
            lend(record.parameterNames, 16);
        };
        host.misbehaviour.map = [this](NRVMPMap& record) {
            lend(record.name, kNameSize);
            lend(record.timeCourse, 12);
            lend(record.parameters, 16);
        };
    }

    // What a run with unguarded memory leaves.
    std::string recordWithoutGuards() {
        const Misbehaviour guards = std::exchange(host.misbehaviour, {});
        attack("no guards");
        host.misbehaviour = guards;
        return recordOfRun(host);
    }

    // A run with everything guarded; afterwards the host has what the plug-in wrote.
    std::string recordWithGuards() {
        EXPECT_TRUE(attack("guards"));
        EXPECT_EQ(lentToPlugin.size(), 3U + 16U + 1U + 4U * host.maps.size());
        for (const Lent& lent : lentToPlugin) std::memcpy(lent.original, lent.copy, lent.bytes);
        return recordOfRun(host);
    }

private:
    static constexpr std::size_t kNameSize = 256;

    struct Lent {
        void* original;
        const void* copy;
        std::size_t bytes;
    };

    void* guardedCopy(const void* original, std::size_t bytes) {
        memory.emplace_back(bytes, GetParam());
        std::memcpy(memory.back().data(), original, bytes);
        return memory.back().data();
    }

    // Replaces a pointer to `count` elements that the plug-in writes.
    template <class T> void lend(T*& pointer, std::size_t count) {
        void* copy = guardedCopy(pointer, count * sizeof(T));
        lentToPlugin.push_back({pointer, copy, count * sizeof(T)});
        pointer = static_cast<T*>(copy);
    }

    // Replaces the pointer to one of these vectors by a write-protected copy.
    template <class T> void protect(void*& pointer, const std::vector<T>& values) {
        if (pointer != values.data()) return;
        pointer = guardedCopy(values.data(), values.size() * sizeof(T));
        memory.back().makeReadOnly();
    }

    void guard(const std::string& function, void*& pointer) {
        if (!pointer) return;
        if (function == "znGetMaskOfCurrentVMR") protect(pointer, *host.mask);
        if (function == "znGetVTCFloatDataOfCurrentVMR") protect(pointer, host.floats);
        if (function == "znGetVTCIntDataOfCurrentVMR") protect(pointer, host.shorts);
        if (function == "znGetVOI") {
            for (const auto& voi : host.vois) protect(pointer, voi);
        }
        if (function == "znGetPredictor") {
            for (const auto& predictor : host.predictors) protect(pointer, predictor);
        }
        if (function == "znGetNRVMPOfCurrentVMR") {
            auto* voxels = static_cast<float*>(pointer);
            lend(voxels, 8 * 6 * 5);
            pointer = voxels;
        }
    }

    std::list<GuardedMemory> memory;
    std::vector<Lent> lentToPlugin;
};

TEST_P(MemoryBounds, AreKeptWithFloats) {
    const std::string expected = recordWithoutGuards();
    EXPECT_TRUE(recordWithGuards() == expected);
}

TEST_P(MemoryBounds, AreKeptWithSixteenBitIntegers) {
    host.header.dataType = 1;
    for (const float value : host.floats) host.shorts.push_back(static_cast<short>(value * 4.0f));
    const std::string expected = recordWithoutGuards();
    EXPECT_TRUE(recordWithGuards() == expected);
}

TEST_P(MemoryBounds, AreKeptWithoutAMask) {
    host.mask.reset();
    host.dialogStrings[1] = "";
    const std::string expected = recordWithoutGuards();
    EXPECT_TRUE(recordWithGuards() == expected);
}

INSTANTIATE_TEST_SUITE_P(Guarded, MemoryBounds, testing::Values(GuardedMemory::Edge::start, GuardedMemory::Edge::end),
                         [](const auto& edge) {
                             return edge.param == GuardedMemory::Edge::start ? "AtTheStart" : "AtTheEnd";
                         });

} // namespace
} // namespace zn::test
