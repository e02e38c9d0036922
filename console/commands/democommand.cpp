#include "console/commands/commands.h"

#include "console/observing.h"
#include "console/workbench.h"
#include "host/loadedlibrary.h"

#include <CLI/CLI.hpp>

#include <QDateTime>

#include <algorithm>
#include <atomic>
#include <ranges>

namespace tov::console {

namespace {

/// Prints what is tried as it happens and counts what did not behave.
class Tour
{
public:
    explicit Tour(Output& output)
        : m_output(output)
    {
    }

    void chapter(const std::string& title)
    {
        m_chapter = title;
        m_output.remark(title);
    }

    void check(const std::string& what, bool behaved)
    {
        m_output.remark((behaved ? "  ok      " : "  FAILED  ") + what);
        m_steps.append(QJsonObject{
            {"chapter", QString::fromStdString(m_chapter)}, {"step", QString::fromStdString(what)}, {"ok", behaved}});
        m_failures += behaved ? 0 : 1;
    }

    ExitStatus finish()
    {
        const auto steps = std::to_string(m_steps.size());
        m_output.answer(m_failures == 0 ? "All " + steps + " steps behaved.\n"
                                        : std::to_string(m_failures) + " of " + steps + " steps failed.\n",
                        {{"steps", m_steps}, {"failures", m_failures}});
        return m_failures == 0 ? ExitStatus::Success : ExitStatus::Failure;
    }

private:
    Output& m_output;
    std::string m_chapter;
    QJsonArray m_steps;
    int m_failures = 0;
};

/// Counts the serial-number notifications that come.
class SerialNumberCounter final : public devices::service::ISerialNumberControl::Observer
{
public:
    void onSerialNumberEvent(const devices::service::SerialNumberEvent& /*event*/) override { ++count; }

    std::atomic<int> count = 0;
};

ExitStatus demo(Workbench& workbench)
{
    namespace controls = host::controls;

    if (workbench.keepsState())
        throw CommandError(ExitStatus::BadUse, "demo has an instrument of its own: leave --state out");

    host::InstrumentSession& session = workbench.session();
    simulator::SimulatedInstrument& instrument = workbench.instrument();
    Tour tour(workbench.output());

    tour.chapter("DevicesService is loaded and registered, a simulated instrument is open.");
    tour.check("the library is loaded from " + host::loadedLibraryPath().toStdString(),
               !host::loadedLibraryPath().isEmpty());
    tour.check("the registry holds " + std::to_string(controls::all.size()) + " kinds of control",
               session.registry().entries().size() == controls::all.size());
    const auto files = workbench.require(controls::fileMemory);
    const auto memory = workbench.require(controls::memoryOperations);
    const auto potentiometers = workbench.require(controls::potentiometers);
    const auto serialNumber = workbench.require(controls::serialNumber);
    const auto usbId = workbench.require(controls::usbId);
    const auto terms = workbench.require(controls::systemTerms);
    const auto loLeakage = workbench.require(controls::loLeakage);
    const auto yq = workbench.require(controls::yqSynthesis);

    tour.chapter("The controls are read and set.");
    const QByteArray note("measured twice");
    tour.check("a file is stored and read back",
               files->writeFile("note.txt", note) && files->readFile({"note.txt", 0, 0}) == note);
    const std::vector<std::byte> pattern(16, std::byte{0x5A});
    const auto contents =
        memory->write(pattern) ? memory->read() : std::unexpected(decltype(memory->read())::error_type());
    tour.check("the memory holds what was written and is intact",
               contents && std::ranges::equal(pattern, *contents | std::views::take(16)) && memory->integrityCheck());
    tour.check("a potentiometer keeps its value in EEPROM",
               potentiometers->writeToEeprom(0, 42) && potentiometers->readFromEeprom(0) == 42);
    SerialNumberCounter counter;
    const Observing observing(serialNumber, counter);
    tour.check("the serial number is written and read back",
               serialNumber->writeSerialNumber(777) && serialNumber->serialNumber() == 777U);
    instrument.waitUntilQuiet();
    tour.check("an observer was told of it", counter.count == 1);
    auto id = usbId->usbId();
    id.id3 = 7;
    tour.check("the USB identifier of a " + id.modelName + " is written and read back",
               usbId->writeUsbId(id) && usbId->usbId().id3 == 7);
    terms->writeSystemTerms(QDateTime::currentDateTimeUtc(), 1.0, {{1, 0.5, 2}}, {});
    tour.check("error terms are stored with their records",
               terms->systemTermsFlag() && terms->termsRecords().size() == 1);
    tour.check("LO leakage is off at first", !loLeakage->isEnabled());
    loLeakage->setEnabled(true);
    tour.check("LO leakage is on after it was switched on", loLeakage->isEnabled());
    tour.check("the Yq module supports several IFs", yq->supportedIfs().size() > 1);
    yq->enableManualIf(true);
    yq->setSelectedIf(1);
    tour.check("IF 1 is chosen manually after it was set", yq->manualIfEnabled() && yq->selectedIf() == 1);

    tour.chapter("The instrument takes its controls away.");
    session.releaseControls([&] { instrument.releaseControls(); });
    const auto list = files->fileList();
    tour.check("the files say: " + (list ? "nothing" : list.error().toStdString()), !list);
    tour.check("memory, potentiometers and serial number fail",
               !memory->read() && !potentiometers->readFromEeprom(0) && !serialNumber->serialNumber());
    tour.check("the USB identifier and the terms read as their defaults",
               usbId->usbId().tag == 1 && usbId->usbIds().empty() && terms->termsRecords().empty());
    tour.check("LO leakage reads as off", !loLeakage->isEnabled());
    tour.check("the selected IF reads as -1 and the list of IFs as empty",
               yq->selectedIf() == -1 && yq->supportedIfs().empty());
    loLeakage->setEnabled(false);

    tour.chapter("The instrument offers its controls again.");
    session.offerControls([&] { instrument.offerControls(); });
    tour.check("the same objects find the file, the memory and the potentiometer",
               files->readFile({"note.txt", 0, 0}) == note && memory->integrityCheck()
                   && potentiometers->readFromEeprom(0) == 42);
    tour.check("the serial number, the USB identifier and the terms are still there",
               serialNumber->serialNumber() == 777U && usbId->usbId().id3 == 7 && terms->systemTermsFlag());
    const int before = counter.count;
    tour.check("the serial number can be written", serialNumber->writeSerialNumber(778).has_value());
    instrument.waitUntilQuiet();
    tour.check("the same observer is told of it", counter.count == before + 1);
    tour.check("the same lo-leakage object finds the function on, though it was switched off in between",
               loLeakage->isEnabled());
    tour.check("the same yq-synthesis object finds IF 1 still chosen", yq->manualIfEnabled() && yq->selectedIf() == 1);
    loLeakage->setEnabled(false);
    tour.check("LO leakage can be switched off", !loLeakage->isEnabled());

    return tour.finish();
}

} // namespace

void addDemoCommand(CLI::App& app, ChosenCommand& chosen)
{
    app.add_subcommand("demo", "Show the main job: controls are made, used, taken away and found again")
        ->callback([&chosen] { chosen = demo; });
}

} // namespace tov::console
