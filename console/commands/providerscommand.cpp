#include "console/commands/commands.h"

#include "console/terminal/spinner.h"
#include "host/providers.h"

#include <utility>

namespace tov::console {

namespace {

std::string typeOf(const host::ProviderOption& option)
{
    using Type = host::ProviderOption::Type;
    switch (option.type) {
    case Type::Flag:
        return "true, false";
    case Type::Number:
        return "number";
    case Type::Choice:
        return option.choices.join(", ").toStdString();
    case Type::List:
        return "text, may be repeated";
    case Type::Text:
        break;
    }
    return "text";
}

std::string defaultOf(const host::ProviderOption& option)
{
    const QVariant& value = option.valueIfNotGiven;
    return (option.type == host::ProviderOption::Type::List ? value.toStringList().join(", ") : value.toString())
        .toStdString();
}

Table optionsOf(const host::ProviderDescription& provider)
{
    Table table({"option", "value", "default", "meaning"});
    for (const host::ProviderOption& option : provider.options)
        table.addRow({option.name, typeOf(option), defaultOf(option), option.meaning});
    return table;
}

void listProviders(ConsoleSession& console)
{
    const host::Providers providers = host::findProviders();
    std::string text;
    QJsonArray found;
    for (const host::ProviderDescription& provider : providers.found) {
        const Table options = optionsOf(provider);
        text += provider.name.toStdString() + " " + provider.version.toStdString() + "  "
                + provider.description.toStdString() + "\n" + provider.file.toStdString() + "\n"
                + console.output().shown(options) + "\n";
        found.append(QJsonObject{{"name", provider.name},
                                 {"version", provider.version},
                                 {"description", provider.description},
                                 {"file", provider.file},
                                 {"options", console.output().rows(options)}});
    }
    QJsonArray refused;
    for (const host::RefusedFile& file : providers.refused) {
        text += "refused: " + file.file.toStdString() + ": " + file.why.toStdString() + "\n";
        refused.append(QJsonObject{{"file", file.file}, {"why", file.why}});
    }
    for (const QString& folder : providers.folders)
        text += "looked in: " + folder.toStdString() + "\n";
    console.output().answer(
        text, {{"providers", found}, {"refused", refused}, {"folders", QJsonArray::fromStringList(providers.folders)}});
}

void listInstruments(ConsoleSession& console)
{
    const host::ProviderDescription& provider = console.choice().provider;
    const auto instruments =
        withSpinner("asking " + provider.name.toStdString(), [&] { return host::findInstruments(provider); });
    if (!instruments)
        throw Failure(instruments.error().toStdString());
    Table table({"id", "model", "serial-number", "description"});
    for (const auto& [id, model, serialNumber, description] : *instruments)
        table.addRow({id, model, serialNumber, description});
    console.output().answer(table, "instruments");
}

} // namespace

Words providerNames(const Words& /*before*/)
{
    Words names;
    for (const host::ProviderDescription& provider : host::findProviders().found)
        names.push_back(provider.name.toStdString());
    return names;
}

void addProvidersCommand(Command& program)
{
    program.add("providers", "List by what instruments are opened, with its options, and where that was looked for")
        .footer("--provider NAME:OPTION=VALUE,... gives options; DEVICESSERVICE_PROVIDER does where it is left out.\n"
                "The option 'instrument' chooses one of several instruments by its id.\n"
                "Whether one can be loaded, with all that it depends on, shows when it is opened.\n"
                "DEVICESSERVICE_PROVIDER_PATH lists folders to look in before that of the installed providers.\n")
        .runs(listProviders);
}

void addInstrumentsCommand(Command& program)
{
    program.add("instruments", "List the instruments that the provider could open, by their ids").runs(listInstruments);
}

} // namespace tov::console
