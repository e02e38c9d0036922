// The same as main.cpp, for a window that is written in QML.

#include "askonce.h"
#include "slowinstrument.h"

#include "host/controls.h"
#include "host/instrumentsession.h"

#include <QGuiApplication>
#include <QQmlContext>
#include <QQuickItem>
#include <QQuickView>

#include <exception>
#include <expected>

using tov::devices::service::ISerialNumberControl;
using Number = std::expected<unsigned int, ISerialNumberControl::Error>;

// What the window may ask, and is answered.
class Instrument final : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void readSerialNumber()
    {
        m_session.run(tov::host::controls::serialNumber, [](auto& control) { return control.serialNumber(); })
            .then(this, [this](const Number& number) { emit told(number ? QString::number(*number) : "it failed"); })
            .onFailed(this, [this](const std::exception& error) { emit told(error.what()); });
    }

signals:
    void told(const QString& serialNumber);

private:
    tov::host::InstrumentSession m_session{slowInstrument()};
};

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    Instrument instrument;
    QQuickView view;
    view.rootContext()->setContextProperty("instrument", &instrument);
    view.setSource(QUrl("qrc:/window.qml"));
    view.show();

    if (QGuiApplication::arguments().contains("--once"))
        return askOnce([&] { QMetaObject::invokeMethod(view.rootObject(), "ask"); },
                       [&] {
                           return view.rootObject()->property("waits").toBool()
                                      ? QString()
                                      : view.rootObject()->property("text").toString();
                       });
    return QGuiApplication::exec();
}

#include "quick.moc"
