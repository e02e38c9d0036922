#include "console/session/consolesession.h"

#include <QFile>

#include <stdexcept>
#include <utility>

namespace tov::console {

ConsoleSession::ConsoleSession(const Options& options)
    : m_output(options.json ? Output::Form::Json : Output::Form::Text)
    , m_stateFile(QString::fromStdString(options.stateFile))
    , m_instrument(std::make_shared<simulator::SimulatedInstrument>())
    , m_session(m_instrument)
{
    for (const std::string& name : options.missing)
        m_instrument->unfitControl(controlNamed(name).keys.sdk);
    if (keepsState())
        openStateFile();
}

void ConsoleSession::openStateFile()
{
    // A lock file that a killed program left empty is only known to be nobody's after this time; one whose
    // owner lives is never taken away.
    constexpr int ownerlessAfter = 1000; // ms
    constexpr int patience = 5000;       // ms
    m_stateLock.emplace(m_stateFile + ".lock");
    m_stateLock->setStaleLockTime(ownerlessAfter);
    if (!m_stateLock->tryLock(patience)) {
        const bool taken = m_stateLock->error() == QLockFile::LockFailedError;
        throw Failure(m_stateFile.toStdString()
                      + (taken ? ": another command uses this state; try again when it has ended"
                               : ": the state cannot be locked; is its folder there and writable?"));
    }
    try {
        if (QFile::exists(m_stateFile))
            m_instrument->load(m_stateFile);
    } catch (const std::runtime_error& error) {
        throw Failure(error.what());
    }
}

void ConsoleSession::keep()
try {
    if (keepsState())
        m_instrument->save(m_stateFile);
} catch (const std::runtime_error& error) {
    throw Failure(error.what());
}

} // namespace tov::console
