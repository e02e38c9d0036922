#include "host/providers.h"

#include "host/loadedlibrary.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>
#include <QRegularExpression>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <utility>

namespace tov::host {

using namespace Qt::StringLiterals;
using provider::InstrumentDescription;
using provider::IProvider;
using provider::Result;

namespace {

#ifdef Q_OS_WIN
constexpr auto librarySuffix = ".dll"_L1;
#else
constexpr auto librarySuffix = ".so"_L1;
#endif

constexpr auto instrumentOption = "instrument"_L1;

QStringList searchedFolders()
{
    const QString named = qEnvironmentVariable("DEVICESSERVICE_PROVIDER_PATH");
    QStringList folders;
    for (const QString& folder : named.split(QDir::listSeparator(), Qt::SkipEmptyParts))
        if (std::filesystem::path(folder.toStdU16String()).is_absolute())
            folders.append(QDir::cleanPath(folder));
    if (const QString library = loadedLibraryPath(); !library.isEmpty())
        folders.append(QFileInfo(library).dir().filePath(QStringLiteral(DEVICESSERVICE_PROVIDER_DIR)));
    folders.removeDuplicates();
    return folders;
}

bool isName(const QString& text)
{
    static const QRegularExpression names(QRegularExpression::anchoredPattern(u"[a-z0-9-]+"_s));
    return names.match(text).hasMatch();
}

Result<ProviderOption> understandOption(const QJsonObject& json)
{
    using Type = ProviderOption::Type;
    static const QMap<QString, Type> types{{u"flag"_s, Type::Flag},
                                           {u"number"_s, Type::Number},
                                           {u"text"_s, Type::Text},
                                           {u"choice"_s, Type::Choice},
                                           {u"list"_s, Type::List}};

    const auto type = types.find(json["type"_L1].toString());
    const QString name = json["name"_L1].toString();
    if (!isName(name) || name == instrumentOption || type == types.end())
        return std::unexpected(
            u"it describes an option '%1' of the type '%2', which cannot be"_s.arg(name, json["type"_L1].toString()));
    ProviderOption option{.name = name,
                          .type = *type,
                          .choices = json["choices"_L1].toVariant().toStringList(),
                          .valueIfNotGiven = json["default"_L1].toVariant(),
                          .meaning = json["meaning"_L1].toString()};
    QVariant& value = option.valueIfNotGiven;
    switch (option.type) {
    case Type::Flag:
        value = value.toBool();
        break;
    case Type::Number:
        value = value.toULongLong();
        break;
    case Type::Text:
        value = value.toString();
        break;
    case Type::Choice:
        if (option.choices.isEmpty())
            return std::unexpected(u"it describes an option '%1' without its choices"_s.arg(name));
        if (!option.choices.contains(value.toString()))
            value = option.choices.front();
        break;
    case Type::List:
        value = value.toStringList();
        break;
    }
    return option;
}

Result<ProviderDescription> understand(const QString& file, const QJsonObject& json)
{
    ProviderDescription described{.file = file,
                                  .name = json["name"_L1].toString(),
                                  .version = json["version"_L1].toString(),
                                  .description = json["description"_L1].toString(),
                                  .options = {}};
    if (described.name.isEmpty())
        return std::unexpected(u"it does not say its name"_s);
    if (!isName(described.name))
        return std::unexpected(u"its name '%1' is not of small letters, digits and hyphens"_s.arg(described.name));
    for (const auto& each : json["options"_L1].toArray()) {
        auto option = understandOption(each.toObject());
        if (!option)
            return std::unexpected(std::move(option.error()));
        if (std::ranges::find(described.options, option->name, &ProviderOption::name) != described.options.end())
            return std::unexpected(u"it describes the option '%1' twice"_s.arg(option->name));
        described.options.push_back(std::move(*option));
    }
    return described;
}

// Reads what the file says of itself; no code of its is run.
Result<ProviderDescription> describe(const QString& file)
{
    const QPluginLoader loader(file);
    const QJsonObject json = loader.metaData();
    // Whether it could be loaded, by its version of Qt for instance, is known already.
    if (json.isEmpty() || loader.errorString() != QPluginLoader().errorString())
        return std::unexpected(loader.errorString().replace(u'\n', u' '));
    const QString made = json["IID"_L1].toString();
    const QString wanted = QStringLiteral(DEVICESSERVICE_PROVIDER_IID);
    if (made != wanted)
        return std::unexpected(made.section(u'/', 0, 0) == wanted.section(u'/', 0, 0)
                                   ? u"it is made for version %1 of the interface, this program for version %2"_s.arg(
                                         made.section(u'/', 1), wanted.section(u'/', 1))
                                   : u"it is a plug-in for something else ('%1')"_s.arg(made));
    return understand(file, json["MetaData"_L1].toObject());
}

// What `call` gives; what it throws, as a sentence.
template <typename Call>
auto guarded(const ProviderDescription& provider, Call call) -> decltype(call())
try {
    return call();
} catch (const std::exception& error) {
    return std::unexpected(u"the provider '%1' failed: %2"_s.arg(provider.name, QString::fromUtf8(error.what())));
} catch (...) {
    return std::unexpected(u"the provider '%1' failed"_s.arg(provider.name));
}

// It stays loaded as long as the program runs, because what it opened may.
Result<IProvider*> load(const ProviderDescription& provider)
{
    return guarded(provider, [&]() -> Result<IProvider*> {
        QPluginLoader loader(provider.file);
        if (auto* const root = qobject_cast<IProvider*>(loader.instance()))
            return root;
        return std::unexpected(u"the provider '%1' cannot be loaded: %2"_s.arg(
            provider.name, loader.isLoaded() ? u"it is none"_s : loader.errorString().replace(u'\n', u' ')));
    });
}

Result<QVariant> understandValue(const ProviderOption& option, const QString& text)
{
    using Type = ProviderOption::Type;

    bool understood = true;
    QVariant value = text;
    QString wanted;
    switch (option.type) {
    case Type::Flag:
        value = text == "true"_L1;
        understood = text == "true"_L1 || text == "false"_L1;
        wanted = u"'true' or 'false'"_s;
        break;
    case Type::Number:
        value = text.toULongLong(&understood);
        wanted = u"a whole number, not below 0"_s;
        break;
    case Type::Choice:
        understood = option.choices.contains(text);
        wanted = u"one of %1"_s.arg(option.choices.join(u", "));
        break;
    case Type::Text:
    case Type::List:
        break;
    }
    if (understood)
        return value;
    return std::unexpected(u"'%1' is no value of the option '%2', which is %3"_s.arg(text, option.name, wanted));
}

// Where the name or file ends, at the end or at a colon. That behind a drive letter does not count.
qsizetype endOfName(const QString& text)
{
    const bool hasDrive =
        text.size() > 2 && text[0].isLetter() && text[1] == u':' && (text[2] == u'/' || text[2] == u'\\');
    const qsizetype colon = text.indexOf(u':', hasDrive ? 2 : 0);
    return colon < 0 ? text.size() : colon;
}

// The one that was chosen, or the first. One that is not listed may be there all the same.
Result<InstrumentDescription> describedInstrument(IProvider& provider, const ProviderChoice& choice)
{
    auto instruments = provider.instruments();
    if (!instruments)
        return std::unexpected(std::move(instruments.error()));
    if (choice.instrument.isEmpty()) {
        if (instruments->empty())
            return std::unexpected(u"the provider '%1' has no instrument"_s.arg(choice.provider.name));
        return std::move(instruments->front());
    }
    const auto chosen = std::ranges::find(*instruments, choice.instrument, &InstrumentDescription::id);
    if (chosen != instruments->end())
        return std::move(*chosen);
    return InstrumentDescription{.id = choice.instrument, .model = {}, .serialNumber = {}, .description = {}};
}

Result<ProviderDescription> findProvider(const QString& nameOrFile)
{
    if (nameOrFile.contains(u'/') || nameOrFile.contains(QDir::separator()) || nameOrFile.endsWith(librarySuffix)) {
        const QFileInfo file(nameOrFile);
        if (!file.isFile())
            return std::unexpected(u"there is no file '%1'"_s.arg(nameOrFile));
        if (!nameOrFile.endsWith(librarySuffix, Qt::CaseInsensitive))
            return std::unexpected(u"'%1' is no provider for this program: its name does not end in '%2'"_s.arg(
                nameOrFile, librarySuffix));
        auto described = describe(file.absoluteFilePath());
        if (!described)
            return std::unexpected(u"'%1' is no provider for this program: %2"_s.arg(nameOrFile, described.error()));
        return described;
    }
    const Providers providers = findProviders();
    const auto found = std::ranges::find(providers.found, nameOrFile, &ProviderDescription::name);
    if (found != providers.found.end())
        return *found;
    QStringList names;
    for (const ProviderDescription& each : providers.found)
        names.append(each.name);
    return std::unexpected(names.isEmpty()
                               ? u"there is no provider '%1'; none was found"_s.arg(nameOrFile)
                               : u"there is no provider '%1'; there is %2"_s.arg(nameOrFile, names.join(u", ")));
}

} // namespace

Providers findProviders()
{
    Providers providers{.folders = searchedFolders(), .found = {}, .refused = {}};
    for (const QString& folder : std::as_const(providers.folders)) {
        for (const QFileInfo& file : QDir(folder).entryInfoList({u"*"_s + librarySuffix}, QDir::Files, QDir::Name)) {
            auto described = describe(file.absoluteFilePath());
            if (!described) {
                providers.refused.push_back({file.absoluteFilePath(), std::move(described.error())});
                continue;
            }
            const auto same = std::ranges::find(providers.found, described->name, &ProviderDescription::name);
            if (same != providers.found.end())
                providers.refused.push_back(
                    {described->file, u"another provider '%1' was found before"_s.arg(described->name)});
            else
                providers.found.push_back(std::move(*described));
        }
    }
    return providers;
}

Result<ProviderChoice> chooseProvider(const QString& named)
{
    QString text = named;
    if (text.isEmpty())
        text = qEnvironmentVariable("DEVICESSERVICE_PROVIDER");
    if (text.isEmpty())
        text = u"simulated"_s;
    const qsizetype end = endOfName(text);
    auto provider = findProvider(text.first(end));
    if (!provider)
        return std::unexpected(std::move(provider.error()));
    ProviderChoice choice{.provider = std::move(*provider), .instrument = {}, .options = {}};
    for (const ProviderOption& option : choice.provider.options)
        choice.options.insert(option.name, option.valueIfNotGiven);
    for (const QString& each : text.sliced(std::min(end + 1, text.size())).split(u',', Qt::SkipEmptyParts)) {
        if (!each.contains(u'='))
            return std::unexpected(u"'%1' is no option; one is NAME=VALUE"_s.arg(each));
        if (auto set = setOption(choice, each.section(u'=', 0, 0), each.section(u'=', 1)); !set)
            return std::unexpected(std::move(set.error()));
    }
    return choice;
}

Result<void> setOption(ProviderChoice& choice, const QString& name, const QString& text)
{
    if (name == instrumentOption) {
        choice.instrument = text;
        return {};
    }
    const auto& options = choice.provider.options;
    const auto option = std::ranges::find(options, name, &ProviderOption::name);
    if (option == options.end())
        return std::unexpected(u"the provider '%1' has no option '%2'"_s.arg(choice.provider.name, name));
    auto value = understandValue(*option, text);
    if (!value)
        return std::unexpected(std::move(value.error()));
    QVariant& set = choice.options[name];
    set = option->type == ProviderOption::Type::List ? QVariant(set.toStringList() << text) : *value;
    return {};
}

Result<std::vector<InstrumentDescription>> findInstruments(const ProviderDescription& provider)
{
    const auto loaded = load(provider);
    if (!loaded)
        return std::unexpected(loaded.error());
    return guarded(provider, [&] { return (*loaded)->instruments(); });
}

Result<OpenInstrument> openInstrument(const ProviderChoice& choice)
{
    const auto loaded = load(choice.provider);
    if (!loaded)
        return std::unexpected(loaded.error());
    return guarded(choice.provider, [&]() -> Result<OpenInstrument> {
        auto chosen = describedInstrument(**loaded, choice);
        if (!chosen)
            return std::unexpected(std::move(chosen.error()));
        auto connection = (*loaded)->open(chosen->id, choice.options);
        if (!connection)
            return std::unexpected(std::move(connection.error()));
        if (*connection == nullptr || (*connection)->instrument() == nullptr)
            return std::unexpected(u"the provider '%1' opened nothing"_s.arg(choice.provider.name));
        return OpenInstrument{std::move(*chosen), std::move(*connection)};
    });
}

} // namespace tov::host
