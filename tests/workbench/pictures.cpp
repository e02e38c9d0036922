// Takes a picture of each panel of the window on a simulated instrument, by daylight and in the dark.
//
// workbench-pictures FOLDER

#include "simulator/plugin/simulatedconnection.h"
#include "workbench/mainwindow.h"
#include "workbench/panels/calibrationpage.h"
#include "workbench/panels/filespage.h"
#include "workbench/panels/pagedpanel.h"
#include "workbench/panels/panels.h"
#include "workbench/panels/termspage.h"

#include <QApplication>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QListWidget>
#include <QLocale>
#include <QMenu>
#include <QPalette>
#include <QPushButton>
#include <QSettings>
#include <QStyle>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
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

// Until what was asked for is answered and shown, also what a panel draws a little later.
bool settle(const workbench::Instrument& instrument, const workbench::MainWindow& window)
{
    constexpr int untilLayoutsAreDone = 10;
    for (int i = 0; i < untilLayoutsAreDone; ++i)
        QCoreApplication::processEvents();
    const auto draws = [&window] {
        return std::ranges::any_of(window.findChildren<QTimer*>(),
                                   [](const QTimer* timer) { return timer->isSingleShot() && timer->isActive(); });
    };
    const bool isIdle = QTest::qWaitFor([&] { return instrument.isIdle() && !draws(); }, 60'000);
    for (int i = 0; i < untilLayoutsAreDone; ++i)
        QCoreApplication::processEvents();
    return isIdle;
}

QString file(const QTemporaryDir& folder, const char* name, const QString& contents)
{
    QFile file(folder.filePath(QString::fromLatin1(name)));
    if (file.open(QIODevice::WriteOnly))
        file.write(contents.toUtf8());
    return file.fileName();
}

// What `text` gives for each of the places from 1 on, one behind the other.
QString series(const QString& separator, const std::function<QString(int)>& text)
{
    constexpr int count = 41;
    QStringList texts;
    for (int place = 1; place <= count; ++place)
        texts.append(text(place));
    return texts.join(separator);
}

QString termsFile()
{
    const auto list = [](const char* name, double size) {
        return QStringLiteral("\"%1\": [%2]").arg(QString::fromLatin1(name), series(",", [size](int place) {
                                                      return QString::asprintf("[%g, %g]", size * std::cos(0.2 * place),
                                                                               size * 0.5 * std::sin(0.31 * place));
                                                  }));
    };
    return QStringLiteral("{\"time\": \"2026-01-31T12:00:00Z\", \"parameter\": 1, \"frequencies\": [%1],"
                          "\"records\": [{\"key\": 1, \"value\": 0.5, \"number\": 201}],"
                          "\"ports\": [{\"port\": 1, %2, %3, %4}]}")
        .arg(series(",", [](int place) { return QString::number(place * 2e8); }), list("directivity", 0.02),
             list("source-match", 0.1), list("reflection-tracking", 0.9));
}

QString ifswFile()
{
    return "vector,value1,value2,value3\n" + series("\n", [](int place) {
               return QString::asprintf("2,%g,%g,%g", std::cos(0.1 * place), 0.3 * std::sin(0.3 * place), 0.01 * place);
           });
}

QString powerFile()
{
    return "time,2026-01-31T12:00:00Z\nparameter,1.5\n"
           "value1,value2,value3,value4,value5,value6,value7,value8,value9\n"
           + series("\n", [](int place) {
                 return QString::asprintf("%g,%g,0.25,1,0,20,3,0.5,0.125", place * 5e8, -10.0 - std::sin(0.2 * place));
             });
}

// Puts something into the panels, which on a new instrument have little to show.
void fill(const workbench::MainWindow& window, const QTemporaryDir& folder)
{
    const auto& temperatures = *window.findChild<workbench::Panel*>(QStringLiteral("temperatures"));
    temperatures.findChild<QDoubleSpinBox*>(QStringLiteral("limit"))->setValue(52.0);
    temperatures.findChild<QPushButton*>(QStringLiteral("pass"))->menu()->actions().at(2)->trigger();
    window.findChild<workbench::FilesPage*>()->addFiles({file(folder, "notes.txt", "measured on bench 3"),
                                                         file(folder, "adjustment.csv", QString(90'000, ';')),
                                                         file(folder, "history.log", QString(12'000, '.'))});
    window.findChild<workbench::TermsPage*>()->openFile(file(folder, "terms.json", termsFile()));
    window.findChild<workbench::CalibrationPage*>(QStringLiteral("ifsw-page"))
        ->openFile(file(folder, "switch.csv", ifswFile()));
    window.findChild<workbench::CalibrationPage*>(QStringLiteral("factory-power-page"))
        ->openFile(file(folder, "power.csv", powerFile()));
}

bool take(const QString& suffix, const QDir& folder)
{
    workbench::Instrument instrument;
    workbench::MainWindow window(instrument, simulated());
    window.resize(1000, 700);
    window.show();
    if (!QTest::qWaitFor([&] { return instrument.state() == workbench::Instrument::State::Open; }, 60'000))
        return false;
    if (!settle(instrument, window))
        return false;
    const QTemporaryDir files;
    fill(window, files);
    for (const workbench::PanelKind& panel : workbench::panelKinds()) {
        window.bringUp(panel.name);
        const auto picture = [&](const QString& name) {
            return settle(instrument, window)
                   && window.grab().save(folder.filePath(name + suffix + QStringLiteral(".png")));
        };
        if (!picture(panel.name))
            return false;
        if (auto* const paged = window.findChild<workbench::PagedPanel*>(panel.name))
            for (const QString& page : paged->pages())
                if (!paged->bringUpPage(page) || !picture(page))
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
