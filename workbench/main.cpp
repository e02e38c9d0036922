#include "service/version.h"
#include "workbench/running.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>

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
    QGuiApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("service-workbench")));

    return tov::workbench::runWindow(tov::workbench::Instrument::openerOf(providerAskedFor(application)));
}
