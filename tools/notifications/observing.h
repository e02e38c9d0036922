#pragma once

#include <memory>
#include <utility>

namespace tov::inline tools {

/// Keeps an observer registered with a control while it exists.
template <typename Control, typename Observer>
class Observing
{
public:
    Observing(std::shared_ptr<Control> control, Observer& observer)
        : m_control(std::move(control))
        , m_observer(observer)
    {
        m_control->addObserver(&m_observer);
    }
    Observing(const Observing&) = delete;
    Observing& operator=(const Observing&) = delete;
    ~Observing() { m_control->removeObserver(&m_observer); }

private:
    const std::shared_ptr<Control> m_control;
    Observer& m_observer;
};

} // namespace tov::inline tools
