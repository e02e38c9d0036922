// A plug-in for something else.

#include <QObject>
#include <QtPlugin>

class OtherTrade final : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.paint")
};

#include "othertrade.moc"
