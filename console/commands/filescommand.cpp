#include "console/commands/subcommand.h"

#include "console/localfile.h"
#include "console/workbench.h"

#include <QFileInfo>

#include <algorithm>
#include <expected>
#include <optional>
#include <type_traits>

namespace tov::console {

namespace {

using devices::service::IFileMemoryControl;

struct Arguments
{
    std::string name;
    std::string localFile;
    std::optional<std::string> newName;
};

// The value of a result of the file store, or its own words as an error.
template <typename Value>
Value valueOf(std::expected<Value, QString> result, const std::string& what)
{
    if (!result)
        throw CommandError(ExitStatus::Failure, what + ": " + result.error().toStdString());
    if constexpr (!std::is_void_v<Value>)
        return *std::move(result);
}

// The instrument knows a file by all that it lists of it.
IFileMemoryControl::FileInfo fileNamed(IFileMemoryControl& files, const std::string& name)
{
    const auto list = valueOf(files.fileList(), "the files cannot be listed");
    const auto found = std::ranges::find(list, QString::fromStdString(name), &IFileMemoryControl::FileInfo::name);
    if (found == list.end())
        throw CommandError(ExitStatus::Failure, "the instrument has no file '" + name + "'; 'files ls' lists them");
    return *found;
}

void list(Workbench& workbench)
{
    const auto files = valueOf(workbench.require(host::controls::fileMemory)->fileList(), "the files cannot be listed");
    Table table({"name", "word1", "word2"});
    QJsonArray json;
    for (const auto& file : files) {
        table.addRow({file.name.toStdString(), std::to_string(file.word1), std::to_string(file.word2)});
        json.append(QJsonObject{{"name", file.name}, {"word1", file.word1}, {"word2", file.word2}});
    }
    workbench.output().answer(table.toText(), {{"files", json}});
}

void showSpace(Workbench& workbench)
{
    const auto space = valueOf(workbench.require(host::controls::fileMemory)->spaceInfo(), "the space cannot be read");
    Table table({"value1", "value2", "value3"});
    table.addRow({std::to_string(space.value1), std::to_string(space.value2), std::to_string(space.value3)});
    workbench.output().answer(table.toText(), {{"value1", QString::number(space.value1)},
                                               {"value2", QString::number(space.value2)},
                                               {"value3", QString::number(space.value3)}});
}

void get(Workbench& workbench, const Arguments& arguments)
{
    const auto files = workbench.require(host::controls::fileMemory);
    const std::string& name = arguments.name;
    const QByteArray contents = valueOf(files->readFile(fileNamed(*files, name)), name);
    writeLocalFile(arguments.localFile, contents);
    workbench.output().answer(name + ": " + std::to_string(contents.size()) + " bytes read\n",
                              {{"name", QString::fromStdString(name)}, {"bytes", contents.size()}});
}

void put(Workbench& workbench, const Arguments& arguments)
{
    const auto files = workbench.require(host::controls::fileMemory);
    const QByteArray contents = readLocalFile(arguments.localFile);
    const QString name = arguments.newName ? QString::fromStdString(*arguments.newName)
                                           : QFileInfo(QString::fromStdString(arguments.localFile)).fileName();
    valueOf(files->writeFile(name, contents), name.toStdString());
    workbench.output().answer(name.toStdString() + ": " + std::to_string(contents.size()) + " bytes written\n",
                              {{"name", name}, {"bytes", contents.size()}});
}

void remove(Workbench& workbench, const Arguments& arguments)
{
    const auto files = workbench.require(host::controls::fileMemory);
    const std::string& name = arguments.name;
    valueOf(files->deleteFile(fileNamed(*files, name)), name);
    workbench.output().answer(name + ": removed\n", {{"name", QString::fromStdString(name)}});
}

void declareName(CLI::App& command, Arguments& arguments)
{
    command.add_option("name", arguments.name, "Name of the file on the instrument")->required()->type_name("NAME");
}

void declareLocalFile(CLI::App& command, Arguments& arguments)
{
    addLocalFile(command, arguments.localFile);
}

} // namespace

void addFilesCommand(CLI::App& app, ChosenCommand& chosen)
{
    CLI::App& files = *app.add_subcommand("files", "Work with the file store of the instrument");
    addSubcommand(files, chosen, "ls", "List the files", list);
    addSubcommand(files, chosen, "df", "Show the space, in the instrument's three figures", showSpace);
    addSubcommand<Arguments>(
        files, chosen, "get", "Copy a file from the instrument to this computer",
        [](CLI::App& command, Arguments& arguments) {
            declareName(command, arguments);
            declareLocalFile(command, arguments);
        },
        get);
    addSubcommand<Arguments>(
        files, chosen, "put", "Copy a file of this computer to the instrument",
        [](CLI::App& command, Arguments& arguments) {
            declareLocalFile(command, arguments);
            command.add_option("name", arguments.newName, "Its name on the instrument; the same when left out")
                ->type_name("NAME");
        },
        put);
    addSubcommand<Arguments>(files, chosen, "rm", "Remove a file from the instrument", declareName, remove);
}

} // namespace tov::console
