#pragma once

#include "devices/controlregistry.h"
#include "devices/controls.h"
#include "devices/icontrollifecycleobserver.h"
#include "sdk/ivna.h"
#include "testing/fakecalibrationcontrol.h"
#include "testing/fakecalibrationcontroller.h"
#include "testing/fakefactorycorrectioncontrol.h"
#include "testing/fakefilememorycontrol.h"
#include "testing/fakekz515powercontrol.h"
#include "testing/fakekz515synthesiscontrol.h"
#include "testing/fakeloleakagecontrol.h"
#include "testing/fakememoryoperationscontrol.h"
#include "testing/fakememoryserialnumbercontrol.h"
#include "testing/fakememoryusbidcontrol.h"
#include "testing/fakepotentiometerscontrol.h"
#include "testing/fakesystemtermscontrol.h"
#include "testing/faketemperaturecontrol.h"
#include "testing/fakeulkpowercontrol.h"
#include "testing/fakeulksynthesiscontrol.h"
#include "testing/fakewn0807powermodulecontrol.h"
#include "testing/fakewn0807synthesiscontrol.h"
#include "testing/fakeyqsynthesiscontrol.h"

#include <array>
#include <memory>
#include <mutex>
#include <tuple>
#include <utility>

namespace tov::testing {

/// The control that stands for each of the kinds, in the order of registration.
using Fakes =
    std::tuple<FakeFileMemoryControl, FakePotentiometersControl, FakeMemoryUsbIdControl, FakeMemorySerialNumberControl,
               FakeMemoryOperationsControl, FakeUlkSynthesisControl, FakeUlkPowerControl, FakeWn0807SynthesisControl,
               FakeWn0807PowerModuleControl, FakeLoLeakageControl, FakeKz515PowerControl, FakeKz515SynthesisControl,
               FakeYqSynthesisControl, FakeSystemTermsControl, FakeYqIfswCalibrationControl,
               FakeYqFactoryPowerCalibrationControl, FakeFactoryCorrectionControl, FakeTemperatureControl,
               FakeCalibrationController, FakeCalibrationController>;

inline constexpr std::size_t kindCount = std::tuple_size_v<Fakes>;
static_assert(kindCount == devices::controls::all.size());

/// Calls `each` with the index of every kind, as a constant.
template <typename Each>
void forEachKind(Each each)
{
    [&]<std::size_t... index>(std::index_sequence<index...>) {
        (each(std::integral_constant<std::size_t, index>()), ...);
    }(std::make_index_sequence<kindCount>());
}

/// An instrument that offers a control of every kind, or none.
///
/// Thread: *any thread*.
class Instrument final : public sdk::IVna
{
public:
    std::shared_ptr<void> findControl(sdk::Key key) override
    {
        for (std::size_t i = 0; i < kindCount; ++i)
            if (devices::controls::all[i].keys.sdk == key) {
                const std::lock_guard guard(m_mutex);
                return m_controls[i];
            }
        return nullptr;
    }

    void offerControls()
    {
        Controls offered;
        forEachKind([&](auto index) {
            using SdkIface = decltype(sdkIfaceOf(std::get<index>(devices::controls::kinds)));
            offered[index] =
                std::shared_ptr<typename SdkIface::type>(std::make_shared<std::tuple_element_t<index, Fakes>>());
        });
        const std::lock_guard guard(m_mutex);
        m_controls.swap(offered);
    }

    void releaseControls()
    {
        Controls released;
        const std::lock_guard guard(m_mutex);
        m_controls.swap(released);
    }

    /// The control of a kind as what it is; null while it is released.
    template <std::size_t index>
    auto control()
    {
        using SdkIface = typename decltype(sdkIfaceOf(std::get<index>(devices::controls::kinds)))::type;
        const std::lock_guard guard(m_mutex);
        return std::static_pointer_cast<std::tuple_element_t<index, Fakes>>(
            std::static_pointer_cast<SdkIface>(m_controls[index]));
    }

private:
    using Controls = std::array<std::shared_ptr<void>, kindCount>;

    template <typename SdkIface, typename... Types>
    static std::type_identity<SdkIface> sdkIfaceOf(const devices::ControlKind<SdkIface, Types...>& kind);

    std::mutex m_mutex; // guards all below
    Controls m_controls;
};

} // namespace tov::testing
