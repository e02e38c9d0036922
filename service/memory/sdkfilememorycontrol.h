#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/service/ifilememorycontrol.h"
#include "service/devicesservice_export.h"
#include "service/memory/ifilememorycontrol.h"

namespace tov::devices::service {

/// The file store, reached through the SDK. Names cross as UTF-8, contents byte by byte. Copies reach the
/// same SDK control; a moved-from object finds no new control once the present one is gone.
class DEVICESSERVICE_EXPORT SdkFileMemoryControl : public IFileMemoryControl
{
public:
    /// Reaches the SDK's control through `control`.
    explicit SdkFileMemoryControl(ReacquiringControl<sdk::service::IFileMemoryControl> control);

    std::expected<QList<FileInfo>, QString> fileList() override;
    std::expected<SpaceInfo, QString> spaceInfo() override;
    std::expected<QByteArray, QString> readFile(const FileInfo& file) override;
    std::expected<void, QString> writeFile(const QString& name, const QByteArray& data) override;
    std::expected<void, QString> deleteFile(const FileInfo& file) override;

private:
    ReacquiringControl<sdk::service::IFileMemoryControl> m_control;
};

} // namespace tov::devices::service
