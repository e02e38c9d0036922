// What the README shows, in a program.

#include "devices/controlregistry.h"
#include "devices/controls.h"
#include "sdk/ivna.h"
#include "service/servicecontrols.h"
#include "service/tuning/sdkloleakagecontrol.h"

#include <any>
#include <memory>

namespace {

class EmptyInstrument final : public sdk::IVna
{
public:
    std::shared_ptr<void> findControl(sdk::Key) override { return nullptr; }
};

} // namespace

int main()
{
    EmptyInstrument empty;
    sdk::IVna* const instrument = &empty;

    tov::devices::ControlRegistry registry;
    tov::devices::service::servicecontrols::registrate(&registry);

    const std::any created = registry.create(tov::devices::controls::loLeakage.keys.registry, instrument);
    if (created.has_value()) {
        auto control = std::any_cast<std::shared_ptr<tov::devices::service::SdkLoLeakageControl>>(created);
        control->setEnabled(true);
    }
    return created.has_value() || registry.entries().empty() ? 1 : 0;
}
