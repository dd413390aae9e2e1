#pragma once

namespace zn::test {

/// Makes German the global locale: its numbers have a comma, and their thousands are grouped by points. On Linux it is
/// compiled into the current directory first, because few systems have other locales than English ones; false where
/// that is not possible (Debian: package locales).
bool setGermanLocale();

} // namespace zn::test
