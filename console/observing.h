#pragma once

#include <memory>
#include <utility>

namespace tov::console {

/// Keeps an observer registered with a control, if there is one, while it exists.
template <typename Control, typename Observer>
class Observing
{
public:
    Observing(std::shared_ptr<Control> control, Observer& observer)
        : m_control(std::move(control))
        , m_observer(observer)
    {
        if (m_control)
            m_control->addObserver(&m_observer);
    }
    Observing(const Observing&) = delete;
    Observing& operator=(const Observing&) = delete;
    ~Observing()
    {
        if (m_control)
            m_control->removeObserver(&m_observer);
    }

    bool hasControl() const { return m_control != nullptr; }

private:
    const std::shared_ptr<Control> m_control;
    Observer& m_observer;
};

} // namespace tov::console
