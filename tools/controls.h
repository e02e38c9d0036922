#pragma once

#include "host/instrumentsession.h"
#include "tools/errors.h"

#include <memory>
#include <string>

namespace tov::inline tools {

/// The kind of control of this name. Throws `BadUse`, which names what may have been meant, for an unknown one.
const host::ControlName& controlNamed(const std::string& name);

/// That the instrument lacks a control.
Failure missing(const host::ControlName& kind);

/// The adapter of this kind. Throws `Failure` when the instrument lacks it.
template <typename Exposed>
std::shared_ptr<Exposed> requireFrom(host::InstrumentSession& session, const host::Control<Exposed>& kind)
{
    // An adapter that was made before would be there even while its control is not.
    if (session.isPresent(kind))
        if (auto control = session.control(kind))
            return control;
    throw missing(kind);
}

} // namespace tov::inline tools
