#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QString>
#include <QTimer>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <iostream>

/// For those who cannot click: asks, waits until there is an answer and prints it, and whether the window's event loop
/// ran meanwhile. Gives what the program ends with.
inline int askOnce(const std::function<void()>& ask, const std::function<QString()>& answer)
{
    int ticks = 0;
    QTimer clock;
    QObject::connect(&clock, &QTimer::timeout, &clock, [&] { ++ticks; });
    clock.start(std::chrono::milliseconds(10));

    ask();
    while (answer().isEmpty())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);

    const bool wentOn = ticks > 3;
    std::cout << answer().toStdString() << "; the window " << (wentOn ? "went on" : "stood still") << " meanwhile\n";
    return wentOn ? EXIT_SUCCESS : EXIT_FAILURE;
}
