#pragma once

#include "provider/iprovider.h"

#include <QObject>

namespace tov::simulator {

/// Opens simulated instruments; there is always one.
class SimulatedProvider final : public QObject, public provider::IProvider
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID DEVICESSERVICE_PROVIDER_IID FILE "simulated.json")
    Q_INTERFACES(tov::provider::IProvider)

public:
    provider::Result<std::vector<provider::InstrumentDescription>> instruments() override;
    provider::Result<std::unique_ptr<provider::IConnection>> open(const QString& id,
                                                                  const QVariantMap& options) override;
};

} // namespace tov::simulator
