#include "console/commands/subcommand.h"

#include "console/localfile.h"
#include "console/progress.h"
#include "console/workbench.h"

#include <algorithm>
#include <type_traits>

namespace tov::console {

namespace {

using devices::service::IMemoryOperationsControl;
using devices::service::MemoryOperationEvent;

struct Arguments
{
    std::string localFile;
};

/// Shows every notification of the memory as progress while it exists: the event's numbers are the bytes in all
/// and the bytes done.
class ShownProgress final : public IMemoryOperationsControl::IObserver
{
public:
    ShownProgress(Workbench& workbench, IMemoryOperationsControl& memory, const std::string& what)
        : m_workbench(workbench)
        , m_memory(memory)
        , m_progress(what)
    {
        m_memory.addObserver(this);
    }
    ShownProgress(const ShownProgress&) = delete;
    ShownProgress& operator=(const ShownProgress&) = delete;
    ~ShownProgress() override
    {
        m_workbench.instrument().waitUntilQuiet();
        m_memory.removeObserver(this);
    }

    void onNotification1(const MemoryOperationEvent& event) override { show(event); }
    void onNotification2(const MemoryOperationEvent& event) override { show(event); }
    void onNotification3(const MemoryOperationEvent& event) override { show(event); }
    void onNotification4(const MemoryOperationEvent& event) override { show(event); }

private:
    void show(const MemoryOperationEvent& event)
    {
        if (m_workbench.output().isText())
            m_progress.show(event.second, event.first);
    }

    Workbench& m_workbench;
    IMemoryOperationsControl& m_memory;
    Progress m_progress;
};

// Carries `operation` out with its progress shown and gives its value. Throws `CommandError` (Failure) when it fails.
template <typename Operation>
auto withProgress(Workbench& workbench, const std::string& what, Operation operation)
{
    const auto memory = workbench.require(host::controls::memoryOperations);
    auto result = [&] {
        const ShownProgress progress(workbench, *memory, what);
        return operation(*memory);
    }();
    if (!result)
        throw CommandError(ExitStatus::Failure, what + " failed: the instrument gives no reason");
    if constexpr (!std::is_void_v<typename decltype(result)::value_type>)
        return *std::move(result);
}

void answer(Workbench& workbench, const std::string& text, qsizetype bytes)
{
    workbench.output().answer(text + ": " + std::to_string(bytes) + " bytes\n", {{"bytes", bytes}});
}

void dump(Workbench& workbench, const Arguments& arguments)
{
    const auto contents =
        withProgress(workbench, "reading the memory", [](IMemoryOperationsControl& memory) { return memory.read(); });
    QByteArray bytes(static_cast<qsizetype>(contents.size()), Qt::Uninitialized);
    std::ranges::transform(contents, bytes.begin(), [](std::byte byte) { return static_cast<char>(byte); });
    writeLocalFile(arguments.localFile, bytes);
    answer(workbench, "read", bytes.size());
}

void load(Workbench& workbench, const Arguments& arguments)
{
    const QByteArray bytes = readLocalFile(arguments.localFile);
    std::vector<std::byte> contents(static_cast<std::size_t>(bytes.size()));
    std::ranges::transform(bytes, contents.begin(), [](char byte) { return static_cast<std::byte>(byte); });
    withProgress(workbench, "writing the memory",
                 [&](IMemoryOperationsControl& memory) { return memory.write(contents); });
    answer(workbench, "written", bytes.size());
}

void erase(Workbench& workbench)
{
    withProgress(workbench, "erasing the memory", [](IMemoryOperationsControl& memory) { return memory.erase(); });
    workbench.output().answer("erased\n", {{"erased", true}});
}

void check(Workbench& workbench)
{
    withProgress(workbench, "checking the memory",
                 [](IMemoryOperationsControl& memory) { return memory.integrityCheck(); });
    workbench.output().answer("intact\n", {{"intact", true}});
}

void declareFile(CLI::App& command, Arguments& arguments)
{
    addLocalFile(command, arguments.localFile);
}

} // namespace

void addMemoryCommand(CLI::App& app, ChosenCommand& chosen)
{
    CLI::App& memory = *app.add_subcommand("memory", "Work with the instrument's memory as a whole");
    addSubcommand<Arguments>(memory, chosen, "dump", "Copy the memory into a file of this computer", declareFile, dump);
    addSubcommand<Arguments>(memory, chosen, "load", "Replace the memory by a file of this computer", declareFile,
                             load);
    addSubcommand(memory, chosen, "erase", "Erase the memory", erase);
    addSubcommand(memory, chosen, "check", "Let the instrument check its memory", check);
}

} // namespace tov::console
