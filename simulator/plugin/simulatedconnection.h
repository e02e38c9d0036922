#pragma once

#include "provider/iconnection.h"
#include "simulator/simulatedinstrument.h"

#include <QLockFile>

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>

namespace tov::simulator {

/// A simulated instrument that is open.
class SimulatedConnection final : public provider::IConnection, public provider::ITestHooks
{
public:
    explicit SimulatedConnection(const Configuration& configuration);
    SimulatedConnection(const SimulatedConnection&) = delete;
    SimulatedConnection& operator=(const SimulatedConnection&) = delete;
    ~SimulatedConnection() override;

    SimulatedInstrument& simulated() noexcept { return *m_instrument; }

    /// How an operation misbehaves.
    struct Misbehaviour
    {
        Answer answer = Answer::AsUsual;
        unsigned int after = 0;                                    ///< how many calls go well before
        std::chrono::microseconds delay = std::chrono::seconds(1); ///< of answers that are late
    };

    /// Has an operation answer so from now on; otherwise as `setAnswer()`.
    provider::Result<void> misbehave(sdk::Key control, const QString& operation, const Misbehaviour& how);

    /// Makes the instrument the one that is kept in `file`, if there is such a file, and keeps it there. Nobody else
    /// may meanwhile: whoever does already is waited for so long. Of a file in a folder that cannot be written, others
    /// may read too.
    provider::Result<void> keepIn(const QString& file, std::chrono::seconds patience);

    std::shared_ptr<sdk::IVna> instrument() override { return m_instrument; }
    void setListener(provider::IControlsListener* listener) override;
    provider::Result<void> keep() override;
    provider::ITestHooks* testHooks() override { return this; }

    std::vector<Ability> abilities() const override;
    provider::Result<void> releaseControls() override;
    provider::Result<void> offerControls() override;
    provider::Result<void> notify(sdk::Key control) override;
    provider::Result<void> setAnswer(sdk::Key control, const QString& operation, Answer answer) override
    {
        return misbehave(control, operation, {.answer = answer});
    }
    provider::Result<void> passTime(std::chrono::milliseconds time) override;
    provider::Result<void> waitUntilQuiet() override;

private:
    bool isOffering() const;
    provider::Result<void> lock(std::chrono::seconds patience);

    const std::shared_ptr<SimulatedInstrument> m_instrument;
    QString m_file; // empty: the instrument is kept nowhere
    std::optional<QLockFile> m_lock;

    // Whether the controls go when nobody holds them any more; shared with the hold.
    const std::shared_ptr<std::atomic<bool>> m_going = std::make_shared<std::atomic<bool>>(false);

    std::recursive_mutex m_mutex; // guards m_listener, also while it is told
    provider::IControlsListener* m_listener = nullptr;
};

} // namespace tov::simulator
