#pragma once

#include "sdk/service/ifilememorycontrol.h"
#include "simulator/support/controlstate.h"
#include "simulator/support/machine.h"

#include <atomic>
#include <cstdint>
#include <expected>
#include <memory>
#include <mutex>
#include <string>
#include <system_error>
#include <vector>

namespace tov::simulator {

/// The files of the simulated instrument, in the order in which they were first written. A name is any UTF-8 text;
/// it never becomes a path of the host.
class FileMemoryState final : public ControlState
{
public:
    using FileInfo = sdk::service::IFileMemoryControl::FileInfo;
    using SpaceInfo = sdk::service::IFileMemoryControl::SpaceInfo;
    using Bytes = std::vector<unsigned char>;

    explicit FileMemoryState(std::uint64_t capacity);

    std::atomic<bool> available = true;

    /// Each with its length in bytes as the first word; the second is 0.
    std::vector<FileInfo> list() const;

    /// Capacity, used and free, in bytes.
    SpaceInfo space() const;

    std::expected<Bytes, std::error_code> read(const std::string& name) const;
    std::error_code write(const std::string& name, Bytes data);
    std::error_code remove(const std::string& name);

    QCborMap save() const override;
    void restore(const QCborMap& saved) override;

private:
    struct File
    {
        std::string name;
        Bytes data;
    };

    std::uint64_t used() const;

    mutable std::mutex m_mutex; // guards all below
    std::uint64_t m_capacity;
    std::vector<File> m_files;
};

/// The file store as the simulated instrument offers it.
class SimulatedFileMemoryControl final : public sdk::service::IFileMemoryControl
{
public:
    SimulatedFileMemoryControl(std::shared_ptr<Machine> machine, std::shared_ptr<FileMemoryState> state);

    bool isAvailable() override;
    void fileList(std::function<void(std::vector<FileInfo>, std::error_code)> answer) override;
    void spaceInfo(std::function<void(SpaceInfo, std::error_code)> answer) override;
    void readFile(FileInfo file, std::function<void(std::vector<unsigned char>, std::error_code)> answer) override;
    void writeFile(std::string name, std::vector<unsigned char> data,
                   std::function<void(std::error_code)> answer) override;
    void deleteFile(FileInfo file, std::function<void(std::error_code)> answer) override;

private:
    const std::shared_ptr<Machine> m_machine;
    const std::shared_ptr<FileMemoryState> m_state;
};

} // namespace tov::simulator
