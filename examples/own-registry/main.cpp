// Uses the library by a registry of its own, as an application does that has one already.

#include "devices/controlregistry.h"
#include "devices/controls.h"
#include "devices/icontrollifecycleobserver.h"
#include "service/memory/ifilememorycontrol.h"
#include "service/memory/iserialnumbercontrol.h"
#include "service/servicecontrols.h"
#include "simulator/simulatedinstrument.h"

#include <any>
#include <iostream>
#include <memory>

using namespace tov::devices;
using service::IFileMemoryControl;
using service::ISerialNumberControl;

// A control of the instrument; null when the instrument lacks it, which is no error.
template <typename Exposed>
std::shared_ptr<Exposed> make(const ControlRegistry& registry, const Control<Exposed>& kind, sdk::IVna* instrument)
{
    const std::any created = registry.create(kind.keys.registry, instrument);
    return created.has_value() ? std::any_cast<std::shared_ptr<Exposed>>(created) : nullptr;
}

// Called on the instrument's thread, which must not wait for a thread that is inside a call to the instrument.
class SerialNumberPrinter final : public ISerialNumberControl::Observer
{
public:
    void onSerialNumberEvent(const service::SerialNumberEvent& event) override
    {
        std::cout << "the serial number was " << event.second << " and is " << event.first << "\n";
    }
};

int main()
{
    ControlRegistry registry;
    service::servicecontrols::registrate(&registry);

    // Outlives what is made from it.
    tov::simulator::SimulatedInstrument instrument;

    const auto serialNumber = make(registry, controls::serialNumber, &instrument);
    const auto files = make(registry, controls::fileMemory, &instrument);
    if (!serialNumber || !files) {
        std::cerr << "the instrument lacks a control\n";
        return 1;
    }

    SerialNumberPrinter printer;
    serialNumber->addObserver(&printer);
    if (!serialNumber->writeSerialNumber(4711))
        std::cerr << "the serial number was not written\n";
    instrument.waitUntilQuiet();

    // The application tells those adapters that want to know; no adapter registers itself.
    auto* const lifecycle = dynamic_cast<IControlLifecycleObserver*>(serialNumber.get());
    lifecycle->onControlsAboutToBeReleased();
    instrument.releaseControls();

    if (const auto list = files->fileList(); !list)
        std::cout << list.error().toStdString() << "\n";

    instrument.offerControls();
    lifecycle->onControlsAvailable();

    std::cout << "the serial number is still " << serialNumber->serialNumber().value() << "\n";
    serialNumber->removeObserver(&printer);
    return 0;
}
