#pragma once

namespace zn::bench {

/// Sum of a block, read once as fast as one core can: many accumulators, the widest vectors of this machine.
///
///   streams   1: from begin to end; 4: four quarters side by side, which some memories deliver faster
double plainRead(const double* block, long long elements, int streams);

} // namespace zn::bench
