#include "devices/controlregistry.h"
#include "service/servicecontrols.h"

int main()
{
    tov::devices::ControlRegistry registry;
    tov::devices::service::servicecontrols::registrate(&registry);
    return registry.entries().empty() ? 1 : 0;
}
