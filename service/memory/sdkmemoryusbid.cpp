#include "service/memory/sdkmemoryusbid.h"

#include "devices/prettymodelname.h"
#include "service/support/blockingbridge.h"
#include "service/support/callforwarding.h"

namespace tov::devices::service {

namespace {

using ISdkControl = sdk::service::IMemoryUsbIdControl;

IUsbIdControl::UsbId fromSdk(const ISdkControl::UsbId& id)
{
    return {id.id1, id.id2, id.id3, prettyModelName(id.model).toStdString(), id.tag, id.data1, id.data2};
}

} // namespace

SdkMemoryUsbId::SdkMemoryUsbId(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
{
}

IUsbIdControl::UsbId SdkMemoryUsbId::usbId()
{
    const auto locked = m_control.lock();
    return locked ? fromSdk(locked->usbId()) : UsbId();
}

std::vector<IUsbIdControl::UsbId> SdkMemoryUsbId::usbIds()
{
    return readConverted(m_control, &ISdkControl::usbIds, fromSdk);
}

bool SdkMemoryUsbId::writeUsbId(const UsbId& id)
{
    return request<bool>(
        m_control, [&](ISdkControl& sdk, const auto& answer) { sdk.writeUsbId({id.id1, id.id2, id.id3}, answer); });
}

} // namespace tov::devices::service
