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

// What an instrument without the control reads as.
IUsbIdControl::UsbId absentUsbId()
{
    IUsbIdControl::UsbId id;
    id.tag = 1;
    return id;
}

} // namespace

SdkMemoryUsbId::SdkMemoryUsbId(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
{
}

IUsbIdControl::UsbId SdkMemoryUsbId::usbId()
{
    const auto locked = m_control.lock();
    return locked ? fromSdk(locked->usbId()) : absentUsbId();
}

std::vector<IUsbIdControl::UsbId> SdkMemoryUsbId::usbIds()
{
    return readConverted(m_control, &ISdkControl::usbIds, fromSdk);
}

bool SdkMemoryUsbId::writeUsbId(const UsbId& id)
{
    return request<bool>(m_control, &ISdkControl::writeUsbId, ISdkControl::UsbIdWords{id.id1, id.id2, id.id3});
}

} // namespace tov::devices::service
