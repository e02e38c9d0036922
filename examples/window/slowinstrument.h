#pragma once

#include "simulator/simulatedinstrument.h"

#include <chrono>
#include <memory>

/// An instrument that answers after a second.
inline std::shared_ptr<tov::simulator::SimulatedInstrument> slowInstrument()
{
    tov::simulator::Configuration configuration;
    configuration.timing.answers = tov::simulator::Timing::Answers::Later;
    configuration.timing.delay = std::chrono::seconds(1);
    return std::make_shared<tov::simulator::SimulatedInstrument>(configuration);
}
