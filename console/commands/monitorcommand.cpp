#include "console/commands/subcommand.h"

#include "console/observing.h"
#include "console/workbench.h"

#include <QJsonDocument>

#include <atomic>
#include <chrono>
#include <csignal>
#include <iostream>
#include <mutex>
#include <thread>

namespace tov::console {

namespace {

using devices::service::IMemoryOperationsControl;
using devices::service::ISerialNumberControl;
using devices::service::ISystemTermsControl;
using devices::service::MemoryOperationEvent;
using devices::service::SerialNumberEvent;

struct Arguments
{
    int exercise = 0;
};

/// Prints a line for every notification: its control, its name and its numbers. In JSON each line is an object.
class Printer final : public IMemoryOperationsControl::IObserver,
                      public ISerialNumberControl::Observer,
                      public ISystemTermsControl::Observer
{
public:
    explicit Printer(bool text)
        : m_text(text)
    {
    }

    void onNotification1(const MemoryOperationEvent& event) override { printMemory("notification1", event); }
    void onNotification2(const MemoryOperationEvent& event) override { printMemory("notification2", event); }
    void onNotification3(const MemoryOperationEvent& event) override { printMemory("notification3", event); }
    void onNotification4(const MemoryOperationEvent& event) override { printMemory("notification4", event); }

    void onSerialNumberEvent(const SerialNumberEvent& event) override
    {
        print("serial-number", "event", {event.first, event.second});
    }

    void onTermsNotice() override { print("system-terms", "notice", {}); }
    void onTermsValue(unsigned int value) override { print("system-terms", "value", {value}); }
    void onTermsSecondNotice() override { print("system-terms", "second-notice", {}); }
    void onTermsStatus(ISystemTermsControl::Status status) override
    {
        print("system-terms", "status", {static_cast<unsigned int>(status)});
    }

private:
    void printMemory(const char* name, const MemoryOperationEvent& event)
    {
        print("memory-operations", name, {event.first, event.second});
    }

    void print(const char* control, const char* name, std::initializer_list<unsigned int> numbers)
    {
        const std::lock_guard guard(m_mutex);
        if (m_text) {
            std::cout << control << " " << name;
            for (const unsigned int number : numbers)
                std::cout << " " << number;
            std::cout << "\n" << std::flush;
            return;
        }
        QJsonArray list;
        for (const unsigned int number : numbers)
            list.append(static_cast<qint64>(number));
        const QJsonObject line{{"control", control}, {"notification", name}, {"numbers", list}};
        std::cout << QJsonDocument(line).toJson(QJsonDocument::Compact).constData() << "\n" << std::flush;
    }

    const bool m_text;
    std::mutex m_mutex; // one line at a time
};

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): all that a signal handler can reach
std::atomic<bool> stopped = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

// Does on the instrument what makes it notify.
void exercise(Workbench& workbench)
{
    const auto serialNumber = workbench.require(host::controls::serialNumber);
    const auto number = serialNumber->serialNumber();
    if (!number || !serialNumber->writeSerialNumber(*number)
        || !workbench.require(host::controls::memoryOperations)->integrityCheck())
        throw CommandError(ExitStatus::Failure, "the instrument did not do what makes it notify; try 'memory check'");
    workbench.instrument().waitUntilQuiet();
}

void monitor(Workbench& workbench, const Arguments& arguments)
{
    Printer printer(workbench.output().isText());
    const Observing memory(workbench.require(host::controls::memoryOperations), printer);
    const Observing serialNumber(workbench.require(host::controls::serialNumber), printer);
    const Observing terms(workbench.require(host::controls::systemTerms), printer);

    for (const int signal : {SIGINT, SIGTERM})
        std::signal(signal, [](int) { stopped = true; });
    if (arguments.exercise == 0)
        std::cerr << "waiting for notifications; Ctrl-C ends\n";
    for (int round = 0; round < arguments.exercise && !stopped; ++round)
        exercise(workbench);
    while (arguments.exercise == 0 && !stopped)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
}

} // namespace

void addMonitorCommand(CLI::App& app, ChosenCommand& chosen)
{
    addSubcommand<Arguments>(
        app, chosen, "monitor", "Print notifications as they come until stopped (Ctrl-C)",
        [](CLI::App& command, Arguments& arguments) {
            command
                .add_option("--exercise", arguments.exercise,
                            "Make the instrument notify COUNT times, by operations that change nothing, and end")
                ->type_name("COUNT")
                ->check(CLI::PositiveNumber);
        },
        monitor);
}

} // namespace tov::console
