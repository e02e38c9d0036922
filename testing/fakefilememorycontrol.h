#pragma once

#include "sdk/service/ifilememorycontrol.h"
#include "testing/answeringcontrol.h"

namespace tov::testing {

/// A fake of `sdk::service::IFileMemoryControl`.
class FakeFileMemoryControl final : public sdk::service::IFileMemoryControl, public AnsweringControl
{
public:
    /// What `isAvailable()` answers.
    bool available = true;

    bool isAvailable() override { return available; }
    void fileList(std::function<void(std::vector<FileInfo>, std::error_code)> answer) override
    {
        answers("fileList", std::move(answer));
    }
    void spaceInfo(std::function<void(SpaceInfo, std::error_code)> answer) override
    {
        answers("spaceInfo", std::move(answer));
    }
    void readFile(FileInfo file, std::function<void(std::vector<unsigned char>, std::error_code)> answer) override
    {
        answers("readFile", std::move(answer), file.name, file.word1, file.word2);
    }
    void writeFile(std::string name, std::vector<unsigned char> data,
                   std::function<void(std::error_code)> answer) override
    {
        answers("writeFile", std::move(answer), name, std::vector<int>(data.begin(), data.end()));
    }
    void deleteFile(FileInfo file, std::function<void(std::error_code)> answer) override
    {
        answers("deleteFile", std::move(answer), file.name, file.word1, file.word2);
    }
};

} // namespace tov::testing
