#pragma once

#include "host/host_fixture.h"

#include <map>
#include <string>

namespace zn::test {

/// A host that can be asked for everything that a run may need: a mask, a design matrix, regions, a label. A test then
/// spoils one answer or several.
///
/// Whatever the host does, `attack` expects that the run ends, that it has said how, and that the busy cursor is off.
/// `expectNoHarm` expects that an ordinary run afterwards leaves the same bytes as one before.
class HostileFixture : public HostFixture {
protected:
    HostileFixture();
    ~HostileFixture() override;

    /// The well-behaved host again.
    void restoreHost();

    /// Initialises the plug-in and runs it, with as much data as the header states; `attempt` says what is wrong.
    bool attack(const std::string& attempt);

    /// An ordinary run, compared with the first one of this process.
    void expectNoHarm(const std::string& attempt);

    /// Ends a search that would never end, because the dialog sets it no limit that it can reach: after so many
    /// products the host returns NaN.
    static constexpr int kMostProducts = 2000;

    /// How often runs have ended with which last log line; empty for a run that logged nothing.
    std::map<std::string, int> ends;

private:
    void expectReport(bool result, const std::string& attempt);
};

} // namespace zn::test
