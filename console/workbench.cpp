#include "console/workbench.h"

#include "console/named.h"

#include <QFile>

#include <stdexcept>
#include <utility>

namespace tov::console {

Workbench::Workbench(const Options& options)
    : m_output(options.form)
    , m_stateFile(QString::fromStdString(options.stateFile))
    , m_instrument(std::make_shared<simulator::SimulatedInstrument>())
    , m_session(m_instrument)
{
    for (const std::string& name : options.missing)
        m_instrument->unfitControl(controlNamed(name).keys.sdk);
    if (keepsState())
        openStateFile();
}

void Workbench::openStateFile()
{
    // A lock file that a killed program left empty is only known to be nobody's after this time; one whose
    // owner lives is never taken away.
    constexpr int ownerlessAfter = 1000; // ms
    constexpr int patience = 5000;       // ms
    m_stateLock.emplace(m_stateFile + ".lock");
    m_stateLock->setStaleLockTime(ownerlessAfter);
    if (!m_stateLock->tryLock(patience)) {
        const bool taken = m_stateLock->error() == QLockFile::LockFailedError;
        throw CommandError(ExitStatus::Failure,
                           m_stateFile.toStdString()
                               + (taken ? ": another command uses this state; try again when it has ended"
                                        : ": the state cannot be locked; is its folder there and writable?"));
    }
    try {
        if (QFile::exists(m_stateFile))
            m_instrument->load(m_stateFile);
    } catch (const std::runtime_error& error) {
        throw CommandError(ExitStatus::Failure, error.what());
    }
}

void Workbench::keep()
try {
    if (keepsState())
        m_instrument->save(m_stateFile);
} catch (const std::runtime_error& error) {
    throw CommandError(ExitStatus::Failure, error.what());
}

CommandError Workbench::missing(const host::ControlName& kind)
{
    return {ExitStatus::Failure,
            "this instrument has no " + std::string(kind.name) + " control; 'service-console info' lists those it has"};
}

const host::ControlName& controlNamed(const std::string& name)
{
    return named(host::controls::all, name, "control", [](const host::ControlName& control) { return control.name; });
}

} // namespace tov::console
