#pragma once

#include "simulator/support/controlstate.h"

#include <mutex>
#include <optional>
#include <utility>

namespace tov::simulator {

/// What the instrument was given last, if anything was. `toCbor()` and `fromCbor()` beside the control that is given
/// it say how it is kept in a file.
///
/// Thread: *any thread*.
template <typename Stored>
class LastStored final : public ControlState
{
public:
    std::optional<Stored> stored() const
    {
        const std::lock_guard guard(m_mutex);
        return m_stored;
    }

    void store(Stored stored)
    {
        const std::lock_guard guard(m_mutex);
        m_stored = std::move(stored);
    }

    QCborMap save() const override
    {
        const std::lock_guard guard(m_mutex);
        return m_stored ? toCbor(*m_stored) : QCborMap();
    }

    void restore(const QCborMap& saved) override
    {
        const std::lock_guard guard(m_mutex);
        m_stored.reset();
        if (!saved.isEmpty())
            fromCbor(saved, m_stored.emplace());
    }

private:
    mutable std::mutex m_mutex; // guards all below
    std::optional<Stored> m_stored;
};

} // namespace tov::simulator
