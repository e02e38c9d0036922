#include "service/memory/sdkfilememorycontrol.h"

#include "service/support/blockingbridge.h"

#include <algorithm>

namespace tov::devices::service {

namespace {

using ISdkControl = sdk::service::IFileMemoryControl;

QList<IFileMemoryControl::FileInfo> toFileList(const std::vector<ISdkControl::FileInfo>& sdkFiles)
{
    QList<IFileMemoryControl::FileInfo> files;
    files.reserve(static_cast<qsizetype>(sdkFiles.size()));
    for (const auto& file : sdkFiles)
        files.append({QString::fromStdString(file.name), file.word1, file.word2});
    return files;
}

IFileMemoryControl::SpaceInfo toSpaceInfo(const ISdkControl::SpaceInfo& space)
{
    return {space.value1, space.value2, space.value3};
}

QByteArray toByteArray(const std::vector<unsigned char>& bytes)
{
    QByteArray copy(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    std::ranges::copy(bytes, copy.begin());
    return copy;
}

ISdkControl::FileInfo toSdk(const IFileMemoryControl::FileInfo& file)
{
    return {file.name.toStdString(), file.word1, file.word2};
}

std::vector<unsigned char> toSdk(const QByteArray& data)
{
    return {data.begin(), data.end()};
}

} // namespace

SdkFileMemoryControl::SdkFileMemoryControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
{
}

std::expected<QList<IFileMemoryControl::FileInfo>, QString> SdkFileMemoryControl::fileList()
{
    return request<std::expected<QList<FileInfo>, QString>, toFileList>(m_control, &ISdkControl::fileList);
}

std::expected<IFileMemoryControl::SpaceInfo, QString> SdkFileMemoryControl::spaceInfo()
{
    return request<std::expected<SpaceInfo, QString>, toSpaceInfo>(m_control, &ISdkControl::spaceInfo);
}

std::expected<QByteArray, QString> SdkFileMemoryControl::readFile(const FileInfo& file)
{
    return request<std::expected<QByteArray, QString>, toByteArray>(
        m_control, [&](ISdkControl& sdk, const auto& answer) { sdk.readFile(toSdk(file), answer); });
}

std::expected<void, QString> SdkFileMemoryControl::writeFile(const QString& name, const QByteArray& data)
{
    return request<std::expected<void, QString>>(m_control, [&](ISdkControl& sdk, const auto& answer) {
        sdk.writeFile(name.toStdString(), toSdk(data), answer);
    });
}

std::expected<void, QString> SdkFileMemoryControl::deleteFile(const FileInfo& file)
{
    return request<std::expected<void, QString>>(
        m_control, [&](ISdkControl& sdk, const auto& answer) { sdk.deleteFile(toSdk(file), answer); });
}

} // namespace tov::devices::service
