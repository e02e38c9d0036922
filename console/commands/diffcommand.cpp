#include "console/commands/commands.h"

#include "console/whole/differences.h"
#include "console/whole/document.h"

namespace tov::console {

namespace {

struct Arguments
{
    std::string a;
    std::string b;
};

constexpr auto instrumentItself = "instrument";

QJsonObject documentOf(ConsoleSession& console, const std::string& name)
{
    const QJsonObject document =
        name == instrumentItself ? readInstrument(console, DocumentKind::Report) : readDocument(name);
    for (const Part& part : parts())
        if (const std::string error = unread(partOf(document, part)); !part.compared.empty() && !error.empty()) {
            std::string what = name;
            what.append(", ").append(part.name).append(" cannot be compared: ").append(error);
            throw Failure(what);
        }
    return document;
}

ExitStatus diff(ConsoleSession& console, const Arguments& arguments)
try {
    const QJsonObject a = documentOf(console, arguments.a);
    const QJsonObject b = documentOf(console, arguments.b);
    const auto differences = differencesBetween(a, b);
    Table table({"path", Column(arguments.a, "a"), Column(arguments.b, "b")});
    for (const Difference& difference : differences)
        table.addRow({difference.path, difference.a, difference.b});
    Output& output = console.output();
    output.answer(differences.empty() ? "" : output.shown(table), {{"differences", output.rows(table)}});
    return differences.empty() ? ExitStatus::Success : ExitStatus::Failure;
} catch (const Failure& error) {
    throw BadUse(error.what()); // what cannot be compared is not different
}

Words documents(const Words& /*before*/)
{
    return {instrumentItself};
}

} // namespace

void addDiffCommand(Command& program)
{
    const auto arguments = std::make_shared<Arguments>();
    program.add("diff", "Compare two instruments: reports in JSON, backups, or this one")
        .argument("a", arguments->a, "A", "File of this computer, or 'instrument' for the instrument itself", documents)
        .argument("b", arguments->b, "B", "The same", documents)
        .footer("When and by what they were read, temperatures, and the instrument's own figures of its files do not\n"
                "count.\n\nExit status: 0 if they are the same, 1 if they differ, 2 if they cannot be compared.\n")
        .runs(diff, arguments);
}

} // namespace tov::console
