// A plug-in for an interface that this program does not have.

#include <QObject>
#include <QtPlugin>

class OtherVersion final : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "tov.devices.provider/0")
};

#include "otherversion.moc"
