#pragma once

#include "sdk/key.h"

#include <memory>

namespace sdk {

/// An instrument: a set of controls that are looked up by key.
class IVna
{
public:
    virtual ~IVna() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// The control that `key` names, or an empty pointer when the instrument does not offer it now.
    ///
    /// The pointer is the control's interface pointer as it stands: an implementation converts its
    /// object to `std::shared_ptr` of the interface before it erases the type.
    ///
    /// Thread: *any thread*.
    virtual std::shared_ptr<void> findControl(Key key) = 0;
};

} // namespace sdk
