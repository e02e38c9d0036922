#include "console/commands/subcommand.h"

#include "console/termsfile.h"
#include "console/workbench.h"

namespace tov::console {

namespace {

using TermsRecord = devices::service::ISystemTermsControl::TermsRecord;

struct Arguments
{
    std::string localFile;
};

void list(Workbench& workbench)
{
    Table table({"key", "value", "number"});
    QJsonArray json;
    for (const TermsRecord& record : workbench.require(host::controls::systemTerms)->termsRecords()) {
        table.addRow({std::to_string(record.key), QString::number(record.value, 'g', 17).toStdString(),
                      std::to_string(record.number)});
        json.append(QJsonObject{{"key", QString::number(record.key)},
                                {"value", record.value},
                                {"number", static_cast<qint64>(record.number)}});
    }
    workbench.output().answer(table.toText(), {{"records", json}});
}

void showFlag(Workbench& workbench)
{
    const bool flag = workbench.require(host::controls::systemTerms)->systemTermsFlag();
    workbench.output().answer(flag ? "on\n" : "off\n", {{"flag", flag}});
}

void write(Workbench& workbench, const Arguments& arguments)
{
    const TermsFile file = readTermsFile(arguments.localFile);
    const auto control = workbench.require(host::controls::systemTerms);
    if (file.records.empty())
        control->writeSystemTerms(file.time, file.parameter, file.terms);
    else
        control->writeSystemTerms(file.time, file.parameter, file.records, file.terms);
    const auto count = static_cast<qint64>(file.records.size());
    workbench.output().answer("written with " + std::to_string(count) + " records\n", {{"records", count}});
}

} // namespace

void addTermsCommand(CLI::App& app, ChosenCommand& chosen)
{
    CLI::App& terms = *app.add_subcommand("terms", "Work with the stored system error terms");
    addSubcommand(terms, chosen, "ls", "List the stored records", list);
    addSubcommand(terms, chosen, "flag", "Show the flag of the stored terms", showFlag);
    addSubcommand<Arguments>(
        terms, chosen, "write", "Store the terms of a file of this computer",
        [](CLI::App& command, Arguments& arguments) { addLocalFile(command, arguments.localFile); }, write)
        ->footer(termsFileFormat);
}

} // namespace tov::console
