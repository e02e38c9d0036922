#pragma once

#include <memory>
#include <utility>

namespace sdk {

/// Weak handle to a control of the interface `T`: neither the handle nor a copy of it keeps the
/// control alive.
///
/// Thread: like `std::weak_ptr`, any thread may use its own copy; one object is not shared unguarded.
template <typename T>
class ControlHandle
{
public:
    /// The result of locking a handle: keeps the control alive while it exists.
    ///
    /// `control` is null exactly when `keepAlive` is empty, in a moved-from value too.
    struct Locked
    {
        std::shared_ptr<T> keepAlive; ///< strong reference; empty without a control
        T* control = nullptr;         ///< the control to call; lives at least as long as `keepAlive`

        Locked() noexcept = default;

        /// A strong reference that holds no object gives a wholly empty value.
        explicit Locked(std::shared_ptr<T> strong) noexcept
            : keepAlive(std::move(strong))
            , control(keepAlive.get())
        {
            if (control == nullptr)
                keepAlive.reset();
        }

        /// Keeps the same control alive.
        Locked(const Locked&) noexcept = default;

        /// Takes the control over; `other` is empty then.
        Locked(Locked&& other) noexcept
            : keepAlive(std::move(other.keepAlive))
            , control(std::exchange(other.control, nullptr))
        {
        }

        /// Gives up its control and keeps that of the other alive.
        Locked& operator=(const Locked&) noexcept = default;

        /// Gives up its control and takes that of `other` over, which is empty then.
        Locked& operator=(Locked&& other) noexcept
        {
            keepAlive = std::move(other.keepAlive);
            control = std::exchange(other.control, nullptr);
            return *this;
        }

        ~Locked() = default;

        /// The control; null if there is none.
        T* operator->() const noexcept { return control; }

        /// The control, which must be there.
        T& operator*() const noexcept { return *control; }

        /// Whether there is a control.
        explicit operator bool() const noexcept { return control != nullptr; }
    };

    /// An empty handle; locking it always fails.
    ControlHandle() noexcept = default;

    /// Refers to `control` without keeping it alive; implicit as it is for `std::weak_ptr`.
    explicit(false) ControlHandle(const std::shared_ptr<T>& control) noexcept
        : m_control(control)
    {
    }

    /// Gives the control if it still lives, otherwise an empty value.
    Locked lock() const noexcept { return Locked(m_control.lock()); }

private:
    std::weak_ptr<T> m_control;
};

} // namespace sdk
