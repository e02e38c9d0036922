// A provider that misbehaves as its options tell it to.

#include "provider/iprovider.h"

#include <QObject>

#include <chrono>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace tov::testing {

using provider::Result;

class BareInstrument final : public sdk::IVna
{
public:
    std::shared_ptr<void> findControl(sdk::Key /*key*/) override { return nullptr; }
};

class BareConnection final : public provider::IConnection
{
public:
    std::shared_ptr<sdk::IVna> instrument() override { return m_instrument; }
    void setListener(provider::IControlsListener* /*listener*/) override {}

private:
    const std::shared_ptr<sdk::IVna> m_instrument = std::make_shared<BareInstrument>();
};

class AwkwardProvider final : public QObject, public provider::IProvider
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID DEVICESSERVICE_PROVIDER_IID FILE "awkwardprovider.json")
    Q_INTERFACES(tov::provider::IProvider)

public:
    Result<std::vector<provider::InstrumentDescription>> instruments() override
    {
        return std::vector<provider::InstrumentDescription>{
            {.id = "left", .model = "bare", .serialNumber = "1", .description = "On the left"},
            {.id = "right", .model = "bare too", .serialNumber = "2", .description = "On the right"}};
    }

    Result<std::unique_ptr<provider::IConnection>> open(const QString& id, const QVariantMap& options) override
    {
        const QString manner = options["manner"].toString();
        if (options["loud"].toBool())
            std::cerr << "opening " << id.toStdString() << std::endl;
        if (manner == "unreachable")
            return std::unexpected("nobody answers at " + id);
        if (manner == "throws")
            throw std::runtime_error("out of order");
        if (manner == "throws-anything")
            throw 42;
        if (manner == "opens-nothing")
            return nullptr;
        while (manner == "never-opens")
            std::this_thread::sleep_for(std::chrono::seconds(1));
        return std::make_unique<BareConnection>();
    }
};

} // namespace tov::testing

#include "awkwardprovider.moc"
