#include "console/commands/commands.h"

#include "console/commandline/localtarget.h"
#include "console/session/results.h"
#include "tools/files/localfile.h"
#include "tools/text/display.h"
#include "tools/text/suggestions.h"

#include <QList>

#include <algorithm>
#include <optional>

namespace tov::console {

namespace {

using devices::service::IFileMemoryControl;

#ifdef Q_OS_WIN
constexpr auto folderEnds = "/\\:";
#else
constexpr auto folderEnds = "/";
#endif

struct Arguments
{
    std::string name;
    std::string localFile;
    LocalTarget target;
    std::optional<std::string> newName;
};

// What is text to the instrument. Bytes that are none would become another name.
QString nameOnInstrument(const std::string& name)
{
    if (!isUtf8(name))
        throw BadUse(quoted(displayed(name)) + " is no name on the instrument: it is not UTF-8");
    return QString::fromStdString(name);
}

QList<IFileMemoryControl::FileInfo> filesOf(IFileMemoryControl& files)
{
    return valueOf(files.fileList(), "the files cannot be listed");
}

// The instrument knows a file by all that it lists of it.
std::optional<IFileMemoryControl::FileInfo> find(IFileMemoryControl& files, const QString& name)
{
    const auto list = filesOf(files);
    const auto found = std::ranges::find(list, name, &IFileMemoryControl::FileInfo::name);
    return found == list.end() ? std::nullopt : std::optional(*found);
}

IFileMemoryControl::FileInfo fileNamed(IFileMemoryControl& files, const std::string& name)
{
    if (const auto found = find(files, nameOnInstrument(name)))
        return *found;
    throw Failure("the instrument has no file " + quoted(name) + "; 'files ls' lists them");
}

void list(ConsoleSession& console)
{
    const auto files = filesOf(*console.require(host::controls::fileMemory));
    Table table({"name", {"bytes", "word1"}, "word2"});
    for (const auto& file : files)
        table.addRow({file.name, {std::to_string(file.word1), file.word1}, {std::to_string(file.word2), file.word2}});
    console.output().answer(table, "files");
}

void showSpace(ConsoleSession& console)
{
    const auto space = valueOf(console.require(host::controls::fileMemory)->spaceInfo(), "the space cannot be read");
    Table table({{"capacity in bytes", "value1"}, {"used", "value2"}, {"free", "value3"}});
    table.addRow({space.value1, space.value2, space.value3});
    console.output().answer(console.output().shown(table), table.toJson().first().toObject());
}

void get(ConsoleSession& console, const Arguments& arguments)
{
    const auto files = console.require(host::controls::fileMemory);
    const std::string& name = arguments.name;
    const QByteArray contents = valueOf(files->readFile(fileNamed(*files, name)), name);
    writeLocalFile(arguments.target, contents);
    if (arguments.target.isStandardOutput())
        return;
    console.output().answer(displayed(name) + ": " + std::to_string(contents.size()) + " bytes read\n",
                            {{"name", QString::fromStdString(name)}, {"bytes", contents.size()}});
}

// What a local file is called on the instrument when nothing else is said.
std::string lastPartOf(const std::string& localFile)
{
    if (localFile == "-")
        throw BadUse("standard input has no name; say which name its contents get on the instrument");
    return localFile.substr(localFile.find_last_of(folderEnds) + 1);
}

void put(ConsoleSession& console, const Arguments& arguments)
{
    const QString name = nameOnInstrument(arguments.newName ? *arguments.newName : lastPartOf(arguments.localFile));
    const auto files = console.require(host::controls::fileMemory);
    // Whichever of the three figures it is, the room is not more.
    const auto space = files->spaceInfo();
    const auto room = space ? std::max({space->value1, space->value2, space->value3}) : std::uint64_t{muchMemory};
    const QByteArray contents =
        readLocalFile(arguments.localFile, static_cast<qint64>(std::min(room, static_cast<std::uint64_t>(muchMemory))));
    if (find(*files, name))
        console.confirm("replace '" + name.toStdString() + "' on the instrument");
    valueOf(files->writeFile(name, contents), name.toStdString());
    console.output().answer(displayed(name.toStdString()) + ": " + std::to_string(contents.size()) + " bytes written\n",
                            {{"name", name}, {"bytes", contents.size()}});
}

void remove(ConsoleSession& console, const Arguments& arguments)
{
    const auto files = console.require(host::controls::fileMemory);
    const std::string& name = arguments.name;
    const auto file = fileNamed(*files, name);
    console.confirm("remove '" + name + "' from the instrument");
    valueOf(files->deleteFile(file), name);
    console.output().answer(displayed(name) + ": removed\n", {{"name", QString::fromStdString(name)}});
}

Words fileNames(const Words& /*before*/, ConsoleSession& console)
{
    Words names;
    for (const auto& file : filesOf(*console.require(host::controls::fileMemory)))
        names.push_back(file.name.toStdString());
    return names;
}

} // namespace

void addFilesCommand(Command& program)
{
    Command& files = program.add("files", "Work with the file store of the instrument");
    const auto arguments = std::make_shared<Arguments>();
    files.add("ls", "List the files").runs(list);
    files.add("df", "Show the space, in the instrument's three figures").runs(showSpace);
    Command& getting = files.add("get", "Copy a file from the instrument to this computer")
                           .argument("name", arguments->name, "NAME", "Name of the file on the instrument", fileNames)
                           .runs(get, arguments);
    addLocalTarget(getting, arguments->target);
    files.add("put", "Copy a file of this computer to the instrument; asks before it replaces one")
        .argument("file", arguments->localFile, "FILE", "File of this computer; - is standard input")
        .optional("name", &arguments->newName, "NAME", "Its name on the instrument; the same when left out")
        .runs(put, arguments);
    files.add("rm", "Remove a file from the instrument")
        .argument("name", arguments->name, "NAME", "Name of the file on the instrument", fileNames)
        .runs(remove, arguments);
}

} // namespace tov::console
