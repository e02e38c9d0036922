#include "simulator/memory/simulatedfilememorycontrol.h"

#include "simulator/support/cborvalues.h"
#include "simulator/support/simulatorerror.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tov::simulator {

using namespace Qt::StringLiterals;

FileMemoryState::FileMemoryState(std::uint64_t capacity)
    : m_capacity(capacity)
{
}

std::vector<FileMemoryState::FileInfo> FileMemoryState::list() const
{
    const std::lock_guard guard(m_mutex);
    std::vector<FileInfo> files;
    files.reserve(m_files.size());
    for (const File& file : m_files)
        files.push_back({file.name, static_cast<std::int32_t>(file.data.size()), 0});
    return files;
}

FileMemoryState::SpaceInfo FileMemoryState::space() const
{
    const std::lock_guard guard(m_mutex);
    return {m_capacity, used(), m_capacity - used()};
}

std::expected<FileMemoryState::Bytes, std::error_code> FileMemoryState::read(const std::string& name) const
{
    const std::lock_guard guard(m_mutex);
    const auto found = std::ranges::find(m_files, name, &File::name);
    if (found == m_files.end())
        return std::unexpected(make_error_code(SimulatorError::NotFound));
    return found->data;
}

std::error_code FileMemoryState::write(const std::string& name, Bytes data)
{
    const std::lock_guard guard(m_mutex);
    const auto found = std::ranges::find(m_files, name, &File::name);
    const std::uint64_t replaced = found != m_files.end() ? found->data.size() : 0;
    if (used() - replaced + data.size() > m_capacity)
        return SimulatorError::NoSpaceLeft;

    if (found != m_files.end())
        found->data = std::move(data);
    else
        m_files.push_back({name, std::move(data)});
    return {};
}

std::error_code FileMemoryState::remove(const std::string& name)
{
    const std::lock_guard guard(m_mutex);
    const auto removed = std::erase_if(m_files, [&](const File& file) { return file.name == name; });
    return removed > 0 ? std::error_code() : SimulatorError::NotFound;
}

std::uint64_t FileMemoryState::used() const
{
    return std::accumulate(m_files.begin(), m_files.end(), std::uint64_t(0),
                           [](std::uint64_t sum, const File& file) { return sum + file.data.size(); });
}

QCborMap FileMemoryState::save() const
{
    const std::lock_guard guard(m_mutex);
    QCborArray files;
    for (const File& file : m_files)
        files.append(QCborMap{{"name"_L1, QString::fromStdString(file.name)}, {"data"_L1, saveBytes(file.data)}});
    return {{"capacity"_L1, static_cast<qint64>(m_capacity)}, {"files"_L1, files}};
}

void FileMemoryState::restore(const QCborMap& saved)
{
    const std::lock_guard guard(m_mutex);
    m_capacity = static_cast<std::uint64_t>(restoreInteger(saved["capacity"_L1]));
    m_files.clear();
    const QCborArray files = saved["files"_L1].toArray();
    for (const auto& file : files) {
        const QCborMap entry = file.toMap();
        m_files.push_back(
            {entry["name"_L1].toString().toStdString(), restoreBytes<unsigned char>(entry["data"_L1].toByteArray())});
    }
}

SimulatedFileMemoryControl::SimulatedFileMemoryControl(std::shared_ptr<Machine> machine,
                                                       std::shared_ptr<FileMemoryState> state)
    : m_machine(std::move(machine))
    , m_state(std::move(state))
{
}

bool SimulatedFileMemoryControl::isAvailable()
{
    return m_state->available;
}

void SimulatedFileMemoryControl::fileList(std::function<void(std::vector<FileInfo>, std::error_code)> answer)
{
    m_machine->answer<std::vector<FileInfo>>(Operation::FileList, std::move(answer),
                                             [state = m_state] { return state->list(); });
}

void SimulatedFileMemoryControl::spaceInfo(std::function<void(SpaceInfo, std::error_code)> answer)
{
    m_machine->answer<SpaceInfo>(Operation::FileSpace, std::move(answer), [state = m_state] { return state->space(); });
}

void SimulatedFileMemoryControl::readFile(FileInfo file,
                                          std::function<void(std::vector<unsigned char>, std::error_code)> answer)
{
    m_machine->answer<std::vector<unsigned char>>(
        Operation::FileRead, std::move(answer),
        [state = m_state, name = std::move(file.name)] { return state->read(name); });
}

void SimulatedFileMemoryControl::writeFile(std::string name, std::vector<unsigned char> data,
                                           std::function<void(std::error_code)> answer)
{
    m_machine->answer(
        Operation::FileWrite, std::move(answer),
        [state = m_state, name = std::move(name), data = std::move(data)] { return state->write(name, data); });
}

void SimulatedFileMemoryControl::deleteFile(FileInfo file, std::function<void(std::error_code)> answer)
{
    m_machine->answer(Operation::FileDelete, std::move(answer),
                      [state = m_state, name = std::move(file.name)] { return state->remove(name); });
}

} // namespace tov::simulator
