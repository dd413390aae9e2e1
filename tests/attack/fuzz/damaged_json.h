#pragma once

#include <random>
#include <string>

namespace zn::test {

/// Changes one value of a JSON text, chosen at random: to one of another type, an extreme number, a copy of another
/// value or a nested list; or removes it. Returns an empty text for one that is not JSON.
std::string damagedJson(const std::string& text, std::minstd_rand& random);

} // namespace zn::test
