#pragma once

#include "devices/controls.h"
#include "devices/icontrollifecycleobserver.h"
#include "testing/answeringcontrol.h"

#include <any>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tov::testing {

/// What observers of the application were told: which of them, and of what.
using Told = std::vector<std::pair<int, std::string>>;

/// A notification of the instrument: which one of its kind, with two numbers to make its arguments from.
struct Notification
{
    unsigned int which = 0;
    unsigned int a = 0;
    unsigned int b = 0;
};

/// A control that the instrument offers, seen without its type.
struct Offered
{
    std::weak_ptr<void> control;
    RecordingControl* recording = nullptr;
    AnsweringControl* answering = nullptr; ///< null when its operations answer by no callback
    std::function<std::size_t()> registrations = [] { return std::size_t{0}; };
    std::function<void(const Notification&)> notify = [](const Notification&) {};
    std::function<void(float)> setTemperature = [](float) {};
    std::function<void(bool)> setAvailable = [](bool) {};
};

/// An adapter that the registry made, seen without its type.
struct Held
{
    std::shared_ptr<void> adapter;                           ///< points to the adapter's own class
    devices::IControlLifecycleObserver* lifecycle = nullptr; ///< null when it is none
};

/// An operation of an adapter and what the contract says of it.
struct Call
{
    std::string name;
    std::vector<std::string> sdkCalls;
    std::string whenPresent;
    std::string whenAbsent;
    std::function<std::string(void*)> call;
    std::string whenFailed = {}; ///< an answer with an error; empty when it answers by no callback
    bool tellsErrorText = false; ///< it is the error's text
    bool readsSnapshot = false;  ///< it gives what was read last, without a call
};

/// How an adapter's observers are kept, and so how often they are told.
enum class Observing {
    Nothing,
    List,        ///< in one list behind one registration; one that came twice is told twice
    Table,       ///< each with a registration of its own that remembers whether it is there; told once
    Corrections, ///< each with a registration of its own, removed only while the control is there; told once
    Temperature, ///< by a signal behind one registration
    Controller,  ///< by the signals of watchers, each with a registration of its own
};

/// A kind of control: how to offer it, to hold its adapter, to observe it, and its operations.
struct Kind
{
    devices::ControlName name;
    Observing observing = Observing::Nothing;
    std::vector<Call> calls;
    std::function<std::pair<std::shared_ptr<void>, Offered>()> offer;
    std::function<Held(const std::any&)> hold;
    std::function<Held(void*)> copy;    ///< empty when the adapter cannot be copied
    std::function<Held(void*)> moveOut; ///< empty when it cannot be moved from

    /// Makes an observer that writes into `told` under its number.
    std::function<std::shared_ptr<void>(void* adapter, Told& told, int number)> makeObserver;
    std::function<void(void* adapter, void* observer)> add;
    std::function<void(void* adapter, void* observer)> remove;

    /// What an observer is told of a notification; empty: nothing.
    std::function<std::string(const Notification&)> told;
};

/// All kinds, in the order of registration.
const std::vector<Kind>& kinds();

/// A seeded bug that the environment asks for, by which the fuzzer proves that it finds any.
bool isSeeded(const char* bug);

} // namespace tov::testing
