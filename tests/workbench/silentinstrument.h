#pragma once

#include "host/controls.h"
#include "openwindow.h"
#include "provider/iconnection.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "testing/fakeinstrument.h"

#include <functional>
#include <memory>
#include <mutex>
#include <system_error>
#include <utility>
#include <vector>

namespace tov::testing {

/// Answers what it is asked when the test wants it to.
class SilentSerialNumber final : public sdk::service::IMemorySerialNumberControl
{
public:
    void readSerialNumber(std::function<void(unsigned int, std::error_code)> answer) override
    {
        const std::lock_guard guard(m_mutex);
        m_asked.push_back(std::move(answer));
    }
    void writeSerialNumber(unsigned int /*number*/, std::function<void(std::error_code)> answer) override
    {
        answer({});
    }
    void addObserver(Observer* /*observer*/) override {}
    void removeObserver(Observer* /*observer*/) override {}

    std::size_t asked() const
    {
        const std::lock_guard guard(m_mutex);
        return m_asked.size();
    }

    /// Answers all that was asked.
    void answer()
    {
        std::vector<std::function<void(unsigned int, std::error_code)>> asked;
        {
            const std::lock_guard guard(m_mutex);
            asked.swap(m_asked);
        }
        for (const auto& each : asked)
            each(4711, {});
    }

private:
    mutable std::mutex m_mutex; // guards m_asked
    std::vector<std::function<void(unsigned int, std::error_code)>> m_asked;
};

/// An instrument whose serial number is such.
class SilentConnection final : public provider::IConnection
{
public:
    explicit SilentConnection(std::shared_ptr<SilentSerialNumber> serialNumber)
    {
        m_instrument->offer<sdk::service::IMemorySerialNumberControl>(host::controls::serialNumber.keys.sdk,
                                                                      std::move(serialNumber));
    }

    // May be held up, or throw.
    void duringLookup(std::function<void()> does) { m_instrument->duringLookup = std::move(does); }

    std::shared_ptr<sdk::IVna> instrument() override { return m_instrument; }
    void setListener(provider::IControlsListener* /*listener*/) override {}

private:
    const std::shared_ptr<FakeInstrument> m_instrument = std::make_shared<FakeInstrument>();
};

} // namespace tov::testing
