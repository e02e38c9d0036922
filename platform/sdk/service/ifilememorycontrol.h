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
/// An error code of the number 0 is a success, whatever its category. The application gets the message of any other
/// one, read as UTF-8; what comes with it is not looked at. Arguments come unchecked. What an operation throws instead
/// of answering reaches the application.
///
/// Thread: *any thread*.
class IFileMemoryControl
{
public:
    /// A file. The library passes the two words on without knowing what they mean.
    struct FileInfo
    {
        std::string name;       ///< in UTF-8
        std::int32_t word1 = 0; ///< first word
        std::int32_t word2 = 0; ///< second word
    };

    /// Three figures that the library passes on without knowing what they mean.
    struct SpaceInfo
    {
        std::uint64_t value1 = 0; ///< first figure
        std::uint64_t value2 = 0; ///< second figure
        std::uint64_t value3 = 0; ///< third figure
    };

    virtual ~IFileMemoryControl() = default;

    /// Whether the file store can be used now. Asked before every other operation, which is not called on false.
    virtual bool isAvailable() = 0;

    /// Answers with the files, in an order that the library keeps.
    virtual void fileList(std::function<void(std::vector<FileInfo>, std::error_code)> answer) = 0;

    /// Answers how much room there is.
    virtual void spaceInfo(std::function<void(SpaceInfo, std::error_code)> answer) = 0;

    /// Answers with the contents of `file`; that they are empty is no failure.
    virtual void readFile(FileInfo file, std::function<void(std::vector<unsigned char>, std::error_code)> answer) = 0;

    /// Stores `data` under `name`, UTF-8.
    virtual void writeFile(std::string name, std::vector<unsigned char> data,
                           std::function<void(std::error_code)> answer) = 0;

    /// Removes `file`.
    virtual void deleteFile(FileInfo file, std::function<void(std::error_code)> answer) = 0;
};

} // namespace sdk::service
