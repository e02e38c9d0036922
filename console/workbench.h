#pragma once

#include "console/exitstatus.h"
#include "console/output.h"
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
    Output::Form form = Output::Form::Text;
    std::vector<std::string> missing; ///< names of controls that the instrument lacks
    std::string stateFile;            ///< where the instrument is kept; empty: nowhere
};

/// What a command works with: an open instrument and a place for its answer.
class Workbench
{
public:
    /// Opens a simulated instrument, the one that is kept in the state file if there is such a file. Throws
    /// `CommandError` for an unknown control (BadUse) and for a state file that cannot be used (Failure).
    explicit Workbench(const Options& options);

    Output& output() noexcept { return m_output; }
    host::InstrumentSession& session() noexcept { return m_session; }
    simulator::SimulatedInstrument& instrument() noexcept { return *m_instrument; }

    /// The adapter of this kind. Throws `CommandError` (Failure) when the instrument lacks it.
    template <typename Exposed>
    std::shared_ptr<Exposed> require(const host::Control<Exposed>& kind)
    {
        // An adapter that was made before would be there even while its control is not.
        if (m_session.isPresent(kind))
            if (auto control = m_session.control(kind))
                return control;
        throw missing(kind);
    }

    bool keepsState() const { return !m_stateFile.isEmpty(); }

    /// Keeps what the command changed in the state file, if there is one. Throws `CommandError` (Failure).
    void keep();

private:
    static CommandError missing(const host::ControlName& kind);
    void openStateFile();

    Output m_output;
    QString m_stateFile;
    std::optional<QLockFile> m_stateLock;
    std::shared_ptr<simulator::SimulatedInstrument> m_instrument;
    host::InstrumentSession m_session;
};

/// The kind of control of this name. Throws `CommandError` (BadUse), which lists the names that there
/// are, for an unknown one.
const host::ControlName& controlNamed(const std::string& name);

} // namespace tov::console
