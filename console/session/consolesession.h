#pragma once

#include "console/session/controls.h"
#include "console/terminal/output.h"
#include "host/instrumentsession.h"
#include "simulator/simulatedinstrument.h"

#include <QLockFile>
#include <QString>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tov::console {

/// What the user asked for besides the command.
struct Options
{
    bool json = false;                ///< answers in JSON instead of text
    std::vector<std::string> missing; ///< names of controls that the instrument lacks
    std::string stateFile;            ///< where the instrument is kept; empty: nowhere
};

/// What a command works with: an open instrument and a place for its answer.
class ConsoleSession
{
public:
    /// Opens a simulated instrument, the one that is kept in the state file if there is such a file. Throws
    /// `BadUse` for an unknown control and `Failure` for a state file that cannot be used.
    explicit ConsoleSession(const Options& options);

    Output& output() noexcept { return m_output; }
    host::InstrumentSession& session() noexcept { return m_session; }
    simulator::SimulatedInstrument& instrument() noexcept { return *m_instrument; }

    /// The adapter of this kind. Throws `Failure` when the instrument lacks it.
    template <typename Exposed>
    std::shared_ptr<Exposed> require(const host::Control<Exposed>& kind)
    {
        return requireFrom(m_session, kind);
    }

    bool keepsState() const { return !m_stateFile.isEmpty(); }

    /// Keeps what the command changed in the state file, if there is one. Throws `Failure`.
    void keep();

private:
    void openStateFile();

    Output m_output;
    QString m_stateFile;
    std::optional<QLockFile> m_stateLock;
    std::shared_ptr<simulator::SimulatedInstrument> m_instrument;
    host::InstrumentSession m_session;
};

} // namespace tov::console
