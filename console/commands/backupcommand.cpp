#include "console/commands/commands.h"

#include "console/commandline/localtarget.h"
#include "console/whole/changes.h"
#include "console/whole/document.h"
#include "tools/files/localfile.h"

#include <QJsonDocument>

#include <algorithm>
#include <iterator>

namespace tov::console {

namespace {

struct Arguments
{
    std::string file;
    std::vector<std::string> only;
    bool dryRun = false;
};

constexpr auto notGivenBack = "Not in a backup, because no instrument gives it back: potentiometers in RAM,\n"
                              "the values of system error terms, calibration data, and tables that were loaded\n"
                              "into modules.\n";

void backup(ConsoleSession& console, const LocalTarget& target)
{
    requireWritable(target);
    const QJsonObject document = readInstrument(console, DocumentKind::Backup);
    Output& output = console.output();
    Table table({"part", "entries", "restored"});
    output.shown(table); // so that columns that there are not are refused before anything is written
    writeLocalFile(target, QJsonDocument(document).toJson());

    std::string incomplete;
    for (const Part& part : parts()) {
        const QJsonValue saved = partOf(document, part);
        const std::string error = errorOf(saved);
        table.addRow(
            {part.name, error.empty() ? std::to_string(saved.toArray().size()) : error, part.restore ? "yes" : "no"});
        if (const std::string why = unread(saved); part.restore && !why.empty())
            incomplete.append(incomplete.empty() ? "" : ", ").append(part.name).append(" (").append(why).append(")");
    }
    if (!target.isStandardOutput())
        output.answer(output.shown(table) + notGivenBack,
                      {{"file", QString::fromStdString(target.path)}, {"parts", output.rows(table)}});
    if (incomplete.empty())
        return;
    output.print();
    throw Failure(target.path + " is written, but lacks what could not be read: " + incomplete);
}

/// Brings the instrument to what was saved of it.
class Restoration
{
public:
    Restoration(ConsoleSession& console, const Arguments& arguments)
        : m_console(console)
        , m_file(arguments.file)
        , m_chosen(chosenFrom(arguments.only))
        , m_document(readDocument(m_file))
    {
        if (!isBackup(m_document))
            throw Failure(m_file + ", format: a report cannot be restored, because contents are not in it");
        for (const Part* part : m_chosen)
            if (!arguments.only.empty() && !isSaved(*part))
                throw Failure(m_file + ", " + placeOf(*part) + ": this was not saved");
        plan();
    }

    const std::vector<Change>& planned() const noexcept { return m_planned; }

    std::vector<TriedChange> run()
    {
        std::vector<TriedChange> tried;
        for (const Part* part : m_chosen) {
            std::vector<Change> changes;
            std::ranges::copy_if(m_planned, std::back_inserter(changes),
                                 [&](const Change& change) { return change.part == part->name; });
            std::ranges::move(
                restorePart(m_console.session(), *part, partOf(m_document, *part), placeOf(*part), changes),
                std::back_inserter(tried));
        }
        m_console.waitUntilQuiet();
        return tried;
    }

    /// What restoring leaves as it is, in lines.
    std::string left() const
    {
        std::string lines;
        for (const Part* part : m_chosen)
            if (const std::string error = errorOf(partOf(m_document, *part)); !isSaved(*part))
                lines.append(part->name)
                    .append(" was not saved")
                    .append(error.empty() ? "" : ": ")
                    .append(error)
                    .append("\n");
        return lines + notGivenBack;
    }

private:
    // In the order of the parts, in whatever order they were named.
    static std::vector<const Part*> chosenFrom(const std::vector<std::string>& only)
    {
        std::vector<const Part*> named;
        std::ranges::transform(only, std::back_inserter(named),
                               [](const std::string& name) { return &restorablePartNamed(name); });
        std::vector<const Part*> chosen = restorableParts();
        if (!named.empty())
            std::erase_if(chosen, [&](const Part* part) { return std::ranges::find(named, part) == named.end(); });
        return chosen;
    }

    bool isSaved(const Part& part) const { return partOf(m_document, part).isArray(); }

    static std::string placeOf(const Part& part) { return "parts." + part.name; }

    void plan()
    {
        for (const Part* part : m_chosen)
            std::ranges::move(
                changesTo(m_console.session(), *part, partOf(m_document, *part), m_file + ", " + placeOf(*part)),
                std::back_inserter(m_planned));
    }

    ConsoleSession& m_console;
    const std::string m_file;
    const std::vector<const Part*> m_chosen;
    const QJsonObject m_document;
    std::vector<Change> m_planned;
};

// The changes and what became, or would become, of each.
Table tableOf(const std::vector<TriedChange>& changes, const std::string& made, const std::string& notMade)
{
    Table table({"part", "item", "was", "becomes", "outcome"});
    for (const auto& [change, error] : changes) {
        std::string outcome = error.empty() ? made : notMade;
        outcome.append(error.empty() ? "" : ": ").append(error);
        table.addRow({change.part, change.item.empty() ? "-" : change.item, change.was, change.becomes, outcome});
    }
    return table;
}

void answer(Output& output, const Table& table, bool isEmpty, const std::string& left)
{
    output.answer((isEmpty ? "nothing to change\n" : output.shown(table)) + left, {{"changes", output.rows(table)}});
}

void restore(ConsoleSession& console, const Arguments& arguments)
{
    Output& output = console.output();
    output.shown(tableOf({}, {}, {})); // so that columns that there are not are refused before anything is changed
    Restoration restoration(console, arguments);
    if (arguments.dryRun || restoration.planned().empty()) {
        std::vector<TriedChange> changes;
        for (const Change& change : restoration.planned())
            changes.push_back({change, change.refusal});
        answer(output, tableOf(changes, "would be written", "cannot be written"), changes.empty(), restoration.left());
        return;
    }
    console.confirm("make " + std::to_string(restoration.planned().size()) + " changes, which '--dry-run' shows");
    const auto changes = restoration.run();
    answer(output, tableOf(changes, "written", "failed"), changes.empty(), restoration.left());
    const auto failed = std::ranges::count_if(changes, [](const TriedChange& tried) { return !tried.error.empty(); });
    if (failed == 0)
        return;
    console.keep(); // what was made stays, as the answer says
    output.print();
    throw Failure(std::to_string(failed) + " of " + std::to_string(changes.size()) + " changes failed"
                  + (failed < std::ssize(changes) ? ", the others are made" : "") + "; restore can be repeated");
}

} // namespace

void addBackupCommand(Command& program)
{
    const auto target = std::make_shared<LocalTarget>();
    Command& backingUp = program.add("backup", "Save what can be read of the instrument into a file")
                             .footer(notGivenBack)
                             .runs(backup, target);
    addLocalTarget(backingUp, *target);
}

void addRestoreCommand(Command& program)
{
    const auto arguments = std::make_shared<Arguments>();
    program.add("restore", "Bring the instrument to what a backup saved")
        .argument("file", arguments->file, "FILE", "File that 'backup' wrote")
        .flag("--dry-run", arguments->dryRun, "Show what would change, and change nothing")
        .optional("--only", &arguments->only, "PART", "Restore this part only; may be repeated",
                  [](const Words& /*before*/) {
                      Words names;
                      std::ranges::transform(restorableParts(), std::back_inserter(names), &Part::name);
                      return names;
                  })
        .footer(notGivenBack)
        .runs(restore, arguments);
}

} // namespace tov::console
