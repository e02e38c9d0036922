#include "console/commands/commands.h"

#include "console/commandline/localtarget.h"
#include "console/terminal/progress.h"
#include "tools/files/localfile.h"
#include "tools/text/bytes.h"

#include <type_traits>

namespace tov::console {

namespace {

using devices::service::IMemoryOperationsControl;
using devices::service::MemoryOperationEvent;

struct LoadArguments
{
    std::string localFile;
    bool pad = false;
};

/// Shows every notification of the memory as progress while it exists: the event's numbers are the bytes in all
/// and the bytes done.
class ShownProgress final : public IMemoryOperationsControl::IObserver
{
public:
    ShownProgress(ConsoleSession& console, IMemoryOperationsControl& memory, const std::string& what)
        : m_console(console)
        , m_memory(memory)
        , m_progress(what)
    {
        m_memory.addObserver(this);
    }
    ShownProgress(const ShownProgress&) = delete;
    ShownProgress& operator=(const ShownProgress&) = delete;
    ~ShownProgress() override { m_memory.removeObserver(this); }

    void onNotification1(const MemoryOperationEvent& event) override { show(event); }
    void onNotification2(const MemoryOperationEvent& event) override { show(event); }
    void onNotification3(const MemoryOperationEvent& event) override { show(event); }
    void onNotification4(const MemoryOperationEvent& event) override { show(event); }

private:
    void show(const MemoryOperationEvent& event)
    {
        if (m_console.output().isText())
            m_progress.show(event.second, event.first);
    }

    ConsoleSession& m_console;
    IMemoryOperationsControl& m_memory;
    Progress m_progress;
};

// Carries `operation` out with its progress shown and gives its value. Throws `Failure` when it fails.
template <typename Operation>
auto withProgress(ConsoleSession& console, const std::string& what, Operation operation)
{
    const auto memory = console.require(host::controls::memoryOperations);
    auto result = [&] {
        const ShownProgress progress(console, *memory, what);
        auto done = operation(*memory);
        console.waitUntilQuiet();
        return done;
    }();
    if (!result)
        throw Failure(what + " failed: the instrument gives no reason");
    if constexpr (!std::is_void_v<typename decltype(result)::value_type>)
        return *std::move(result);
}

void answer(ConsoleSession& console, const std::string& text, qsizetype bytes)
{
    console.output().answer(text + ": " + std::to_string(bytes) + " bytes\n", {{"bytes", bytes}});
}

void dump(ConsoleSession& console, const LocalTarget& target)
{
    requireWritable(target);
    const auto contents =
        withProgress(console, "reading the memory", [](IMemoryOperationsControl& memory) { return memory.read(); });
    writeLocalFile(target, toByteArray(contents));
    if (!target.isStandardOutput())
        answer(console, "read", static_cast<qsizetype>(contents.size()));
}

std::size_t sizeOfMemory(ConsoleSession& console)
{
    if (const auto contents = console.require(host::controls::memoryOperations)->read())
        return contents->size();
    throw Failure("the memory cannot be read, by which its size is known: the instrument gives no reason");
}

void load(ConsoleSession& console, const LoadArguments& arguments)
{
    std::vector<std::byte> contents = toBytes(readLocalFile(arguments.localFile, muchMemory));
    const std::size_t size = sizeOfMemory(console);
    if (contents.size() > size || (contents.size() < size && !arguments.pad))
        throw Failure(arguments.localFile + " has " + std::to_string(contents.size()) + " bytes and the memory "
                      + std::to_string(size) + (contents.size() < size ? "; --pad fills the rest with 0xFF" : ""));
    contents.resize(size, std::byte{0xFF});
    console.confirm("replace the instrument's memory");
    withProgress(console, "writing the memory",
                 [&](IMemoryOperationsControl& memory) { return memory.write(contents); });
    answer(console, "written", static_cast<qsizetype>(contents.size()));
}

void erase(ConsoleSession& console)
{
    console.confirm("erase the instrument's memory");
    withProgress(console, "erasing the memory", [](IMemoryOperationsControl& memory) { return memory.erase(); });
    console.output().answer("erased\n", {{"erased", true}});
}

void check(ConsoleSession& console)
{
    withProgress(console, "checking the memory",
                 [](IMemoryOperationsControl& memory) { return memory.integrityCheck(); });
    console.output().answer("intact\n", {{"intact", true}});
}

} // namespace

void addMemoryCommand(Command& program)
{
    Command& memory = program.add("memory", "Work with the instrument's memory as a whole");
    const auto target = std::make_shared<LocalTarget>();
    addLocalTarget(memory.add("dump", "Copy the memory into a file of this computer").runs(dump, target), *target);
    const auto arguments = std::make_shared<LoadArguments>();
    memory.add("load", "Replace the memory by a file of this computer, of the same size")
        .argument("file", arguments->localFile, "FILE", "File of this computer; - is standard input")
        .flag("--pad", arguments->pad, "Fill the memory behind a shorter file with 0xFF")
        .runs(load, arguments);
    memory.add("erase", "Erase the memory").runs(erase);
    memory.add("check", "Let the instrument check its memory").runs(check);
}

} // namespace tov::console
