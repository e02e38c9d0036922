// The smallest complete provider: it opens an instrument with one control.

#include "devices/controls.h"
#include "provider/iprovider.h"
#include "sdk/service/iloleakagecontrol.h"

#include <QObject>

#include <atomic>
#include <memory>
#include <vector>

namespace provider = tov::provider;

// A control: what the SDK says to do, here to a variable instead of an instrument.
class LoLeakageControl final : public sdk::service::ILoLeakageControl
{
public:
    explicit LoLeakageControl(bool enabled)
        : m_enabled(enabled)
    {
    }

    bool isEnabled() override { return m_enabled; }
    void setEnabled(bool enabled) override { m_enabled = enabled; }

private:
    std::atomic<bool> m_enabled;
};

// The instrument gives its controls by their keys, and nothing for those that it lacks.
class Instrument final : public sdk::IVna
{
public:
    explicit Instrument(bool enabled)
        : m_loLeakage(std::make_shared<LoLeakageControl>(enabled))
    {
    }

    std::shared_ptr<void> findControl(sdk::Key key) override
    {
        if (key == tov::devices::controls::loLeakage.keys.sdk)
            return m_loLeakage.load();
        return nullptr;
    }

    void close() { m_loLeakage.store(nullptr); }

private:
    // Exactly the interface that the key stands for: findControl() erases the type.
    std::atomic<std::shared_ptr<sdk::service::ILoLeakageControl>> m_loLeakage;
};

// The open instrument. This one's control neither goes nor comes while it is open, so there is nothing to tell.
class Connection final : public provider::IConnection
{
public:
    explicit Connection(bool enabled)
        : m_instrument(std::make_shared<Instrument>(enabled))
    {
    }
    ~Connection() override { m_instrument->close(); }

    std::shared_ptr<sdk::IVna> instrument() override { return m_instrument; }
    void setListener(provider::IControlsListener* /*listener*/) override {}

private:
    const std::shared_ptr<Instrument> m_instrument;
};

class OwnProvider final : public QObject, public provider::IProvider
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID DEVICESSERVICE_PROVIDER_IID FILE "ownprovider.json")
    Q_INTERFACES(tov::provider::IProvider)

public:
    provider::Result<std::vector<provider::InstrumentDescription>> instruments() override
    {
        return std::vector<provider::InstrumentDescription>{
            {.id = "desk", .model = "own", .serialNumber = "1", .description = "On the desk"}};
    }

    provider::Result<std::unique_ptr<provider::IConnection>> open(const QString& id,
                                                                  const QVariantMap& options) override
    {
        if (id != "desk")
            return std::unexpected("there is no instrument '" + id + "' here");
        return std::make_unique<Connection>(options["enabled"].toBool());
    }
};

#include "ownprovider.moc"
