// A window that asks a slow instrument, and does not stand still meanwhile. With --once it asks without being told.

#include "askonce.h"
#include "slowinstrument.h"

#include "host/controls.h"
#include "host/instrumentsession.h"

#include <QApplication>
#include <QPushButton>

#include <exception>
#include <expected>

using tov::devices::service::ISerialNumberControl;
using Number = std::expected<unsigned int, ISerialNumberControl::Error>;

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QPushButton button("Read the serial number");
    tov::host::InstrumentSession session(slowInstrument()); // ends before the button, to which its answers go

    QObject::connect(&button, &QPushButton::clicked, &button, [&] {
        button.setEnabled(false);
        session.run(tov::host::controls::serialNumber, [](auto& control) { return control.serialNumber(); })
            .then(&button, [](const Number& number) { return number ? QString::number(*number) : "it failed"; })
            .onFailed(&button, [](const std::exception& error) { return QString(error.what()); })
            .then(&button, [&](const QString& answer) {
                button.setText(answer);
                button.setEnabled(true);
            });
    });
    button.show();

    if (QApplication::arguments().contains("--once"))
        return askOnce([&] { button.click(); }, [&] { return button.isEnabled() ? button.text() : QString(); });
    return QApplication::exec();
}
