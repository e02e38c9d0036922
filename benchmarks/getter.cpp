// Prints how many nanoseconds a getter of an adapter takes on the simulated instrument, to compare scripts with.

#include "host/controls.h"
#include "host/instrumentsession.h"
#include "simulator/simulatedinstrument.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <limits>
#include <memory>

int main()
{
    using Clock = std::chrono::steady_clock;
    constexpr int rounds = 5;
    constexpr int calls = 1'000'000;

    tov::host::InstrumentSession session(std::make_shared<tov::simulator::SimulatedInstrument>());
    const auto loLeakage = session.control(tov::host::controls::loLeakage);
    double best = std::numeric_limits<double>::max();
    int on = 0;
    for (int round = 0; round < rounds; ++round) {
        const auto start = Clock::now();
        for (int call = 0; call < calls; ++call)
            on += loLeakage->isEnabled() ? 1 : 0;
        best = std::min(best, std::chrono::duration<double, std::nano>(Clock::now() - start).count() / calls);
    }
    std::cout << best << "\n";
    return on == 0 ? 0 : 1;
}
