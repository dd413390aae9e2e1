#pragma once

namespace zn::bench {

/// Sum of a block, read once as fast as one core can: many accumulators, the widest vectors of this machine.
///
///   streams   1: from beginning to end; 4: four quarters in parallel, which some memory systems deliver faster
double plainRead(const double* block, long long elements, int streams);

} // namespace zn::bench
