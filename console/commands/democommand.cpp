#include "console/commands/commands.h"

#include "console/workbench.h"
#include "host/loadedlibrary.h"

#include <CLI/CLI.hpp>

namespace tov::console {

namespace {

/// Prints what is tried as it happens and counts what did not behave.
class Tour
{
public:
    explicit Tour(const Output& output)
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

    ExitStatus finish() const
    {
        const auto steps = std::to_string(m_steps.size());
        m_output.answer(m_failures == 0 ? "All " + steps + " steps behaved.\n"
                                        : std::to_string(m_failures) + " of " + steps + " steps failed.\n",
                        {{"steps", m_steps}, {"failures", m_failures}});
        return m_failures == 0 ? ExitStatus::Success : ExitStatus::Failure;
    }

private:
    const Output& m_output;
    std::string m_chapter;
    QJsonArray m_steps;
    int m_failures = 0;
};

ExitStatus demo(Workbench& workbench)
{
    host::InstrumentSession& session = workbench.session();
    simulator::SimulatedInstrument& instrument = workbench.instrument();
    Tour tour(workbench.output());

    tour.chapter("DevicesService is loaded and registered, a simulated instrument is open.");
    tour.check("the library is loaded from " + host::loadedLibraryPath().toStdString(),
               !host::loadedLibraryPath().isEmpty());
    tour.check("the registry holds " + std::to_string(host::controls::all.size()) + " kinds of control",
               session.registry().entries().size() == host::controls::all.size());
    const auto loLeakage = workbench.require(host::controls::loLeakage);
    const auto yq = workbench.require(host::controls::yqSynthesis);

    tour.chapter("The controls are read and set.");
    tour.check("LO leakage is off at first", !loLeakage->isEnabled());
    loLeakage->setEnabled(true);
    tour.check("LO leakage is on after it was switched on", loLeakage->isEnabled());
    tour.check("the Yq module supports several IFs", yq->supportedIfs().size() > 1);
    yq->enableManualIf(true);
    yq->setSelectedIf(1);
    tour.check("IF 1 is chosen manually after it was set", yq->manualIfEnabled() && yq->selectedIf() == 1);

    tour.chapter("The instrument takes its controls away.");
    session.releaseControls([&] { instrument.releaseControls(); });
    tour.check("LO leakage reads as off", !loLeakage->isEnabled());
    tour.check("the selected IF reads as -1 and the list of IFs as empty",
               yq->selectedIf() == -1 && yq->supportedIfs().empty());
    loLeakage->setEnabled(false);

    tour.chapter("The instrument offers its controls again.");
    session.offerControls([&] { instrument.offerControls(); });
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
