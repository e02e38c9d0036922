#pragma once

#include <QCborMap>

namespace tov::simulator {

/// What the instrument remembers for one of its controls, whichever control object changes it.
///
/// Thread: *any thread*.
class ControlState
{
public:
    ControlState() = default;
    ControlState(const ControlState&) = delete;
    ControlState& operator=(const ControlState&) = delete;
    virtual ~ControlState() = default;

    /// Everything, to be kept in a file.
    virtual QCborMap save() const = 0;

    /// Takes over what `save()` gave.
    virtual void restore(const QCborMap& saved) = 0;
};

} // namespace tov::simulator
