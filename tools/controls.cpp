#include "tools/controls.h"

#include "tools/text/named.h"

namespace tov::inline tools {

Failure missing(const host::ControlName& kind)
{
    Failure lacking("this instrument has no " + std::string(kind.name)
                    + " control; 'service-console info' lists those it has");
    return lacking;
}

const host::ControlName& controlNamed(const std::string& name)
{
    return named(host::controls::all, name, "control", [](const host::ControlName& control) { return control.name; });
}

} // namespace tov::inline tools
