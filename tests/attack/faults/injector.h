#pragma once

#include "attack/faults/fault_record.h"

#include <cstddef>

namespace zn::test {

/// A library that is loaded before all others into znica (LD_PRELOAD), counts its calls of certain functions and
/// disturbs one of them. Nothing counts before main() begins. The environment says what to do:
///
///   ZN_FAULT_FOLDERS   FOLDER[:FOLDER...]; calls count whose path or descriptor lies in one of these. Allocations and
///                      new threads always count
///   ZN_FAULT_RECORD    file of sizeof(FaultRecord) bytes for the counters
///   ZN_FAULT_LOG       optional: file to which every counted call is appended, "rename\tFROM\tTO" for example
///   ZN_FAULT           optional: CALL:K:KIND:NUMBER:ONWARDS. The K-th CALL (from 1), and those after it if ONWARDS is
///                      not 0, is disturbed in this way:
///                        fail          it has no effect and sets errno to NUMBER (close does close)
///                        short         reads and writes handle half of the bytes
///                        kill          the process is killed before the call
///                        kill-half     ... after half of the bytes
///                        kill-after    ... after the call
///                        signal        the process receives signal NUMBER, then the call is made
///                        signal-wait   ... the call is made 20 ms later
///                        signal-after  the call is made, then the process receives signal NUMBER
///                        pause         before the call, the file ZN_FAULT_PAUSE.reached appears, and the process waits
///                                      for the file ZN_FAULT_PAUSE.go
///
/// One disturbance lives as long as the call. Wrappers ask it what to do.
class Disturbance {
public:
    explicit Disturbance(Call call);
    ~Disturbance();
    Disturbance(const Disturbance&) = delete;
    Disturbance& operator=(const Disturbance&) = delete;

    bool fails() const;                            ///< true: errno is set and the call must not be made
    std::size_t shortened(std::size_t size) const; ///< how many bytes to handle

private:
    bool hit_;
};

/// Whether a path, relative to a folder's descriptor or AT_FDCWD, lies in one of the folders; appends to the log.
bool isWatched(Call call, int folder, const char* path, const char* second = nullptr);
bool isWatched(Call call, int descriptor);

/// Remembers that a descriptor was opened in one of the folders, or that it was closed.
void watchDescriptor(int descriptor, bool watched);

/// Whether calls count: main() has begun.
bool isCounting();
bool isMainThread();

} // namespace zn::test
