#pragma once

#include "simulator/support/controlstate.h"

#include <mutex>
#include <optional>
#include <utility>

namespace tov::simulator {

/// What the instrument was given last, if anything was.
template <typename Stored>
class LastStored : public ControlState
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

    QCborMap save() const final
    {
        const std::lock_guard guard(m_mutex);
        return m_stored ? toCbor(*m_stored) : QCborMap();
    }

    void restore(const QCborMap& saved) final
    {
        const std::lock_guard guard(m_mutex);
        m_stored.reset();
        if (!saved.isEmpty())
            m_stored = fromCbor(saved);
    }

private:
    virtual QCborMap toCbor(const Stored& stored) const = 0;
    virtual Stored fromCbor(const QCborMap& saved) const = 0;

    mutable std::mutex m_mutex; // guards all below
    std::optional<Stored> m_stored;
};

} // namespace tov::simulator
