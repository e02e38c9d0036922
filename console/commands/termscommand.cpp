#include "console/commands/commands.h"

#include "tools/files/termsfile.h"
#include "tools/text/values.h"

namespace tov::console {

namespace {

using TermsRecord = devices::service::ISystemTermsControl::TermsRecord;

void list(ConsoleSession& console)
{
    Table table({"key", "value", "number"});
    for (const TermsRecord& record : console.require(host::controls::systemTerms)->termsRecords())
        table.addRow({record.key,
                      {toText(record.value), record.value},
                      {std::to_string(record.number), static_cast<qint64>(record.number)}});
    console.output().answer(table, "records");
}

void showFlag(ConsoleSession& console)
{
    const bool flag = console.require(host::controls::systemTerms)->systemTermsFlag();
    console.output().answer(flag ? "on\n" : "off\n", {{"flag", flag}});
}

void write(ConsoleSession& console, const std::string& localFile)
{
    const TermsFile file = readTermsFile(localFile);
    const auto control = console.require(host::controls::systemTerms);
    if (file.records.empty())
        control->writeSystemTerms(file.time, file.parameter, file.terms);
    else
        control->writeSystemTerms(file.time, file.parameter, file.records, file.terms);
    const auto count = static_cast<qint64>(file.records.size());
    console.output().answer("written with " + std::to_string(count) + " records\n", {{"records", count}});
}

} // namespace

void addTermsCommand(Command& program)
{
    Command& terms = program.add("terms", "Work with the stored system error terms");
    const auto localFile = std::make_shared<std::string>();
    terms.add("ls", "List the stored records").runs(list);
    terms.add("flag", "Show the flag of the stored terms").runs(showFlag);
    terms.add("write", "Store the terms of a file of this computer")
        .argument("file", *localFile, "FILE", "File of this computer")
        .footer(termsFileFormat)
        .runs(write, localFile);
}

} // namespace tov::console
