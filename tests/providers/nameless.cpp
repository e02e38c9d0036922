// A plug-in of the right interface that says nothing of itself.

#include "provider/iprovider.h"

#include <QObject>

class Nameless final : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID DEVICESSERVICE_PROVIDER_IID)
};

#include "nameless.moc"
