#include "console/commands/commands.h"

#include "console/files/localfile.h"

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
        throw Failure(what + ": " + result.error().toStdString());
    if constexpr (!std::is_void_v<Value>)
        return *std::move(result);
}

// The instrument knows a file by all that it lists of it.
IFileMemoryControl::FileInfo fileNamed(IFileMemoryControl& files, const std::string& name)
{
    const auto list = valueOf(files.fileList(), "the files cannot be listed");
    const auto found = std::ranges::find(list, QString::fromStdString(name), &IFileMemoryControl::FileInfo::name);
    if (found == list.end())
        throw Failure("the instrument has no file '" + name + "'; 'files ls' lists them");
    return *found;
}

void list(ConsoleSession& console)
{
    const auto files = valueOf(console.require(host::controls::fileMemory)->fileList(), "the files cannot be listed");
    Table table({"name", "word1", "word2"});
    QJsonArray json;
    for (const auto& file : files) {
        table.addRow({file.name.toStdString(), std::to_string(file.word1), std::to_string(file.word2)});
        json.append(QJsonObject{{"name", file.name}, {"word1", file.word1}, {"word2", file.word2}});
    }
    console.output().answer(table.toText(), {{"files", json}});
}

void showSpace(ConsoleSession& console)
{
    const auto space = valueOf(console.require(host::controls::fileMemory)->spaceInfo(), "the space cannot be read");
    Table table({"value1", "value2", "value3"});
    table.addRow({std::to_string(space.value1), std::to_string(space.value2), std::to_string(space.value3)});
    console.output().answer(table.toText(), {{"value1", QString::number(space.value1)},
                                             {"value2", QString::number(space.value2)},
                                             {"value3", QString::number(space.value3)}});
}

void get(ConsoleSession& console, const Arguments& arguments)
{
    const auto files = console.require(host::controls::fileMemory);
    const std::string& name = arguments.name;
    const QByteArray contents = valueOf(files->readFile(fileNamed(*files, name)), name);
    writeLocalFile(arguments.localFile, contents);
    console.output().answer(name + ": " + std::to_string(contents.size()) + " bytes read\n",
                            {{"name", QString::fromStdString(name)}, {"bytes", contents.size()}});
}

void put(ConsoleSession& console, const Arguments& arguments)
{
    const auto files = console.require(host::controls::fileMemory);
    // Whichever of the three figures it is, the room is not more.
    const auto space = files->spaceInfo();
    const auto room = space ? std::max({space->value1, space->value2, space->value3}) : std::uint64_t{muchMemory};
    const QByteArray contents =
        readLocalFile(arguments.localFile, static_cast<qint64>(std::min(room, static_cast<std::uint64_t>(muchMemory))));
    const QString name = arguments.newName ? QString::fromStdString(*arguments.newName)
                                           : QFileInfo(QString::fromStdString(arguments.localFile)).fileName();
    valueOf(files->writeFile(name, contents), name.toStdString());
    console.output().answer(name.toStdString() + ": " + std::to_string(contents.size()) + " bytes written\n",
                            {{"name", name}, {"bytes", contents.size()}});
}

void remove(ConsoleSession& console, const Arguments& arguments)
{
    const auto files = console.require(host::controls::fileMemory);
    const std::string& name = arguments.name;
    valueOf(files->deleteFile(fileNamed(*files, name)), name);
    console.output().answer(name + ": removed\n", {{"name", QString::fromStdString(name)}});
}

} // namespace

void addFilesCommand(Command& program)
{
    Command& files = program.add("files", "Work with the file store of the instrument");
    const auto arguments = std::make_shared<Arguments>();
    files.add("ls", "List the files").runs(list);
    files.add("df", "Show the space, in the instrument's three figures").runs(showSpace);
    files.add("get", "Copy a file from the instrument to this computer")
        .argument("name", arguments->name, "NAME", "Name of the file on the instrument")
        .argument("file", arguments->localFile, "FILE", "File of this computer")
        .runs(get, arguments);
    files.add("put", "Copy a file of this computer to the instrument")
        .argument("file", arguments->localFile, "FILE", "File of this computer")
        .optional("name", &arguments->newName, "NAME", "Its name on the instrument; the same when left out")
        .runs(put, arguments);
    files.add("rm", "Remove a file from the instrument")
        .argument("name", arguments->name, "NAME", "Name of the file on the instrument")
        .runs(remove, arguments);
}

} // namespace tov::console
