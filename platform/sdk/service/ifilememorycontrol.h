#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <system_error>
#include <vector>

namespace sdk::service {

/// The small file store in the instrument's memory. Every operation but `isAvailable()` answers through
/// its callback, exactly once, on any thread, before or after it returns.
///
/// Thread: *any thread*.
class IFileMemoryControl
{
public:
    struct FileInfo
    {
        std::string name; // UTF-8
        std::int32_t word1 = 0;
        std::int32_t word2 = 0;
    };

    struct SpaceInfo
    {
        std::uint64_t value1 = 0;
        std::uint64_t value2 = 0;
        std::uint64_t value3 = 0;
    };

    virtual ~IFileMemoryControl() = default;

    /// Whether the file store can be used now.
    virtual bool isAvailable() = 0;

    virtual void fileList(std::function<void(std::vector<FileInfo>, std::error_code)> answer) = 0;
    virtual void spaceInfo(std::function<void(SpaceInfo, std::error_code)> answer) = 0;
    virtual void readFile(FileInfo file, std::function<void(std::vector<unsigned char>, std::error_code)> answer) = 0;
    virtual void writeFile(std::string name, std::vector<unsigned char> data,
                           std::function<void(std::error_code)> answer) = 0;
    virtual void deleteFile(FileInfo file, std::function<void(std::error_code)> answer) = 0;
};

} // namespace sdk::service
