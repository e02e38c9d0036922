// Opens a simulated instrument, switches a function of it and follows its temperature.

#include "host/controls.h"
#include "host/instrumentsession.h"
#include "simulator/simulatedinstrument.h"

#include <QCoreApplication>

#include <chrono>
#include <iostream>
#include <memory>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);

    // The instrument: here a simulated one. The session registers the library and creates adapters on demand.
    const auto instrument = std::make_shared<tov::simulator::SimulatedInstrument>();
    tov::host::InstrumentSession session(instrument);

    const auto loLeakage = session.control(tov::host::controls::loLeakage);
    const auto temperature = session.control(tov::host::controls::temperature);
    if (!loLeakage || !temperature) {
        std::cerr << "the instrument lacks a control\n";
        return 1;
    }

    loLeakage->setEnabled(true);
    std::cout << "LO leakage function: " << (loLeakage->isEnabled() ? "on" : "off") << "\n";

    // The signal comes on the instrument's thread; a receiver with a context gets it in its own.
    using tov::devices::service::SdkTemperatureControl;
    QObject::connect(temperature.get(), &SdkTemperatureControl::temperaturesChanged, &application, [&] {
        std::cout << "temperature: " << temperature->temperature() << " °C\n";
        if (temperature->temperature() > 24.0)
            QCoreApplication::quit();
        else
            instrument->passTime(std::chrono::seconds(2));
    });

    instrument->passTime(std::chrono::seconds(2));
    return QCoreApplication::exec();
}
