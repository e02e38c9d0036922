#include "console/commands/commands.h"

#include "console/files/localfile.h"
#include "console/terminal/progress.h"

#include <algorithm>
#include <type_traits>

namespace tov::console {

namespace {

using devices::service::IMemoryOperationsControl;
using devices::service::MemoryOperationEvent;

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

void dump(ConsoleSession& console, const std::string& localFile)
{
    const auto contents =
        withProgress(console, "reading the memory", [](IMemoryOperationsControl& memory) { return memory.read(); });
    QByteArray bytes(static_cast<qsizetype>(contents.size()), Qt::Uninitialized);
    std::ranges::transform(contents, bytes.begin(), [](std::byte byte) { return static_cast<char>(byte); });
    writeLocalFile(localFile, bytes);
    answer(console, "read", bytes.size());
}

void load(ConsoleSession& console, const std::string& localFile)
{
    const QByteArray bytes = readLocalFile(localFile, muchMemory);
    std::vector<std::byte> contents(static_cast<std::size_t>(bytes.size()));
    std::ranges::transform(bytes, contents.begin(), [](char byte) { return static_cast<std::byte>(byte); });
    withProgress(console, "writing the memory",
                 [&](IMemoryOperationsControl& memory) { return memory.write(contents); });
    answer(console, "written", bytes.size());
}

void erase(ConsoleSession& console)
{
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
    const auto localFile = std::make_shared<std::string>();
    memory.add("dump", "Copy the memory into a file of this computer")
        .argument("file", *localFile, "FILE", "File of this computer")
        .runs(dump, localFile);
    memory.add("load", "Replace the memory by a file of this computer")
        .argument("file", *localFile, "FILE", "File of this computer")
        .runs(load, localFile);
    memory.add("erase", "Erase the memory").runs(erase);
    memory.add("check", "Let the instrument check its memory").runs(check);
}

} // namespace tov::console
