#include "service/version.h"
#include "workbench/mainwindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

#include <cstdlib>
#include <memory>

using namespace tov::workbench;

namespace {

// What is given after --provider, once that is all that was asked.
QString providerAskedFor(const QApplication& application)
{
    QCommandLineParser words;
    words.setApplicationDescription(QCoreApplication::translate(
        "main", "Shows one instrument and works with it. Without --provider, DEVICESSERVICE_PROVIDER counts, and the "
                "simulated instrument without that."));
    words.addHelpOption();
    words.addVersionOption();
    const QCommandLineOption provider(QStringLiteral("provider"),
                                      QCoreApplication::translate("main", "Opens the instrument by this provider."),
                                      QCoreApplication::translate("main", "NAME-OR-FILE[:OPTION=VALUE,...]"));
    words.addOption(provider);
    words.process(application);
    if (!words.positionalArguments().isEmpty())
        words.showHelp(2);
    return words.value(provider);
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("DevicesService"));
    QCoreApplication::setApplicationName(QStringLiteral("service-workbench"));
    QCoreApplication::setApplicationVersion(QString::fromLatin1(tov::devices::service::version));
    QGuiApplication::setDesktopFileName(QStringLiteral("service-workbench"));

    const QString provider = providerAskedFor(application);
    const auto instrument = std::make_unique<Instrument>();
    MainWindow window(*instrument, Instrument::openerOf(provider));
    QObject::connect(&window, &MainWindow::left, &application, [] { QCoreApplication::exit(EXIT_SUCCESS); });
    window.show();

    const int status = QApplication::exec();
    if (instrument->underWay())
        std::_Exit(status); // the call never returns, and what waits for its thread would not either
    return status;
}
