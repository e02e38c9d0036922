#include "console/workbench.h"

#include <algorithm>
#include <utility>

namespace tov::console {

Workbench::Workbench(Output output, const std::vector<std::string>& missing)
    : m_output(output)
    , m_instrument(std::make_shared<simulator::SimulatedInstrument>())
    , m_session(m_instrument)
{
    for (const std::string& name : missing)
        m_instrument->unfitControl(controlNamed(name).keys.sdk);
}

CommandError Workbench::missing(const host::ControlName& kind)
{
    return {ExitStatus::Failure,
            "this instrument has no " + std::string(kind.name) + " control; 'service-console info' lists those it has"};
}

const host::ControlName& controlNamed(const std::string& name)
{
    const auto& all = host::controls::all;
    const auto found = std::ranges::find(all, name, &host::ControlName::name);
    if (found != all.end())
        return *found;

    std::string known;
    for (const host::ControlName& control : all)
        known.append(known.empty() ? "" : ", ").append(control.name);
    throw CommandError(ExitStatus::BadUse, "unknown control '" + name + "'; there are " + known);
}

} // namespace tov::console
