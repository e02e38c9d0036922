// Takes a picture of each panel of the window on a simulated instrument, by daylight and in the dark.
//
// workbench-pictures FOLDER

#include "simulator/plugin/simulatedconnection.h"
#include "workbench/mainwindow.h"
#include "workbench/panels/panels.h"

#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <QLocale>
#include <QPalette>
#include <QSettings>
#include <QStyle>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <memory>

namespace {

namespace workbench = tov::workbench;
namespace simulator = tov::simulator;

QPalette darkPalette()
{
    QPalette dark;
    const QColor ground(0x2b, 0x2b, 0x2b);
    const QColor text(0xe6, 0xe6, 0xe6);
    for (const auto role : {QPalette::Window, QPalette::Button, QPalette::ToolTipBase})
        dark.setColor(role, ground);
    dark.setColor(QPalette::Base, ground.darker(130));
    dark.setColor(QPalette::AlternateBase, ground.lighter(115));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        dark.setColor(role, text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(QPalette::Disabled, role, text.darker(200));
    dark.setColor(QPalette::PlaceholderText, text.darker(160));
    dark.setColor(QPalette::Highlight, QColor(0x2a, 0x6f, 0xb0));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::Link, QColor(0x6c, 0xb2, 0xf0));
    return dark;
}

workbench::Instrument::Opener simulated()
{
    return []() -> tov::provider::Result<workbench::Opened> {
        return workbench::Opened{
            .provider = {.file = "/usr/lib/x86_64-linux-gnu/DevicesService/providers/simulated-provider.so",
                         .name = "simulated",
                         .version = "2.0.0",
                         .description = "A simulated instrument",
                         .options = {}},
            .instrument = {.description = {.id = "simulated",
                                           .model = "Simulated analyser",
                                           .serialNumber = "100001",
                                           .description = "A simulated instrument, new each time"},
                           .connection = std::make_unique<simulator::SimulatedConnection>(simulator::Configuration())}};
    };
}

// Until what was asked for is answered and shown.
bool settle(const workbench::Instrument& instrument)
{
    constexpr int untilLayoutsAreDone = 10;
    for (int i = 0; i < untilLayoutsAreDone; ++i)
        QCoreApplication::processEvents();
    const bool isIdle = QTest::qWaitFor([&] { return instrument.isIdle(); }, 60'000);
    for (int i = 0; i < untilLayoutsAreDone; ++i)
        QCoreApplication::processEvents();
    return isIdle;
}

bool take(const QString& suffix, const QDir& folder)
{
    workbench::Instrument instrument;
    workbench::MainWindow window(instrument, simulated());
    window.resize(1000, 700);
    window.show();
    if (!QTest::qWaitFor([&] { return instrument.state() == workbench::Instrument::State::Open; }, 60'000))
        return false;
    for (const workbench::PanelKind& panel : workbench::panelKinds()) {
        window.bringUp(panel.name);
        const auto picture = [&](const QString& name) {
            return settle(instrument) && window.grab().save(folder.filePath(name + suffix + QStringLiteral(".png")));
        };
        if (!picture(panel.name))
            return false;
        auto* const pages = window.findChild<QWidget*>(panel.name)->findChild<QListWidget*>();
        for (int row = 0; pages != nullptr && row < pages->count(); ++row) {
            pages->setCurrentRow(row);
            if (!picture(panel.name + '-' + pages->item(row)->text()))
                return false;
        }
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QTemporaryDir settings;
    QCoreApplication::setApplicationName(QStringLiteral("workbench-pictures"));
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    QLocale::setDefault(QLocale(QLocale::English));
    QApplication::setStyle(QStringLiteral("Fusion"));
    const QDir folder(QString::fromLocal8Bit(argc > 1 ? argv[1] : ""));
    if (argc != 2 || !folder.mkpath(QStringLiteral("."))) {
        std::fputs("usage: workbench-pictures FOLDER\n", stderr);
        return 2;
    }
    const bool light = take({}, folder);
    QApplication::setPalette(darkPalette());
    return light && take(QStringLiteral("-dark"), folder) ? 0 : 1;
}
