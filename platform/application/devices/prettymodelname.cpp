#include "devices/prettymodelname.h"

namespace tov::devices {

QString prettyModelName(sdk::Model model)
{
    switch (model) {
    case sdk::Model::Unknown:
        return QStringLiteral("Unknown model");
    case sdk::Model::TwoPort3:
        return QStringLiteral("2-port analyser, 3 GHz");
    case sdk::Model::TwoPort8:
        return QStringLiteral("2-port analyser, 8 GHz");
    case sdk::Model::FourPort8:
        return QStringLiteral("4-port analyser, 8 GHz");
    case sdk::Model::TwoPort20:
        return QStringLiteral("2-port analyser, 20 GHz");
    case sdk::Model::FourPort20:
        return QStringLiteral("4-port analyser, 20 GHz");
    }
    return QStringLiteral("Unknown model (%1)").arg(static_cast<int>(model));
}

} // namespace tov::devices
