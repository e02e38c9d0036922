#include "workbench/running.h"

#include "workbench/mainwindow.h"

#include <QApplication>

#include <cstdlib>
#include <utility>

namespace tov::workbench {

int runWindow(Instrument::Opener opener)
{
    Instrument instrument;
    MainWindow window(instrument, std::move(opener));
    QObject::connect(&window, &MainWindow::left, &window, [] { QCoreApplication::exit(EXIT_SUCCESS); });
    window.show();

    const int status = QApplication::exec();
    if (!instrument.isIdle())
        std::_Exit(status);
    return status;
}

} // namespace tov::workbench
