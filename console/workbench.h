#pragma once

#include "console/exitstatus.h"
#include "console/output.h"
#include "host/instrumentsession.h"
#include "simulator/simulatedinstrument.h"

#include <memory>
#include <string>
#include <vector>

namespace tov::console {

/// What a command works with: an open instrument and a place for its answer.
class Workbench
{
public:
    /// Opens a simulated instrument that lacks the controls named in `missing`. Throws `CommandError`
    /// (BadUse) for an unknown name.
    Workbench(Output output, const std::vector<std::string>& missing);

    const Output& output() const noexcept { return m_output; }
    host::InstrumentSession& session() noexcept { return m_session; }
    simulator::SimulatedInstrument& instrument() noexcept { return *m_instrument; }

    /// The adapter of this kind. Throws `CommandError` (Failure) when the instrument lacks it.
    template <typename Exposed>
    std::shared_ptr<Exposed> require(const host::Control<Exposed>& kind)
    {
        if (auto control = m_session.control(kind))
            return control;
        throw missing(kind);
    }

private:
    static CommandError missing(const host::ControlName& kind);

    Output m_output;
    std::shared_ptr<simulator::SimulatedInstrument> m_instrument;
    host::InstrumentSession m_session;
};

/// The kind of control of this name. Throws `CommandError` (BadUse), which lists the names that there
/// are, for an unknown one.
const host::ControlName& controlNamed(const std::string& name);

} // namespace tov::console
