// The adapters that detach themselves when they are destroyed, when the instrument cannot be asked any more.

#include "service/calibration/sdkcalibrationcontrolhandle.h"
#include "service/calibration/sdkcalibrationcontrolwatcher.h"
#include "service/memory/sdkmemoryoperationscontrol.h"
#include "service/memory/sdkserialnumbercontrol.h"
#include "service/memory/sdksystemtermscontrol.h"
#include "service/monitoring/sdktemperaturecontrol.h"
#include "testing/fakecalibrationcontroller.h"
#include "testing/fakememoryoperationscontrol.h"
#include "testing/fakememoryserialnumbercontrol.h"
#include "testing/fakesystemtermscontrol.h"
#include "testing/faketemperaturecontrol.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <stdexcept>

namespace tov::testing {

namespace {

using namespace devices::service;

/// A handle together with its watcher.
class Watched
{
public:
    explicit Watched(devices::ReacquiringControl<sdk::service::calibrations::ICalibrationController> control)
        : m_handle(std::move(control))
        , m_watcher(m_handle)
    {
    }

private:
    SdkCalibrationControlHandle m_handle;
    const SdkCalibrationControlWatcher m_watcher;
};

template <typename Adapter_, typename SdkIface_, typename Fake_>
struct Detaching
{
    using Adapter = Adapter_;
    using SdkIface = SdkIface_;
    using Fake = Fake_;
};

template <typename Case>
class Destruction : public ::testing::Test
{
protected:
    std::shared_ptr<typename Case::Fake> fake = std::make_shared<typename Case::Fake>();
    bool lookupFails = false;
    std::optional<typename Case::Adapter> adapter{std::in_place,
                                                  devices::ReacquiringControl<typename Case::SdkIface>([this] {
                                                      if (lookupFails)
                                                          throw std::runtime_error("the instrument failed");
                                                      return sdk::ControlHandle<typename Case::SdkIface>(fake);
                                                  })};
};

using Cases = ::testing::Types<
    Detaching<SdkMemoryOperationsControl, sdk::service::IMemoryOperationsControl, FakeMemoryOperationsControl>,
    Detaching<SdkSerialNumberControl, sdk::service::IMemorySerialNumberControl, FakeMemorySerialNumberControl>,
    Detaching<SdkSystemTermsControl, sdk::service::ISystemTermsControl, FakeSystemTermsControl>,
    Detaching<SdkTemperatureControl, sdk::ITemperatureControl, FakeTemperatureControl>,
    Detaching<Watched, sdk::service::calibrations::ICalibrationController, FakeCalibrationController>>;
TYPED_TEST_SUITE(Destruction, Cases);

} // namespace

TYPED_TEST(Destruction, TakesAControlThatCannotBeLookedUpForAbsent)
{
    ASSERT_EQ(this->fake->observers().size(), 1U);
    this->fake.reset();
    this->lookupFails = true;
    EXPECT_NO_THROW(this->adapter.reset());
}

TYPED_TEST(Destruction, DetachesFromTheControlThatIsThere)
{
    this->lookupFails = true;
    this->adapter.reset();
    EXPECT_EQ(this->fake->observers().size(), 0U);
}

} // namespace tov::testing
