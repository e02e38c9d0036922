#include "service/tuning/sdkkz515powercontrol.h"
#include "service/tuning/sdkkz515synthesiscontrol.h"
#include "service/tuning/sdkloleakagecontrol.h"
#include "service/tuning/sdkulksynthesiscontrol.h"
#include "service/tuning/sdkwn0807powercontrol.h"
#include "service/tuning/sdkwn0807synthesiscontrol.h"
#include "service/tuning/sdkyqsynthesiscontrol.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace tov::testing {

namespace {

using namespace devices::service;

template <typename AdapterClass, typename SdkClass>
struct Of
{
    using Adapter = AdapterClass;
    using SdkIface = SdkClass;
};

template <typename Kind>
class ValueAdapterClass : public ::testing::Test
{
};

using Adapters = ::testing::Types<Of<SdkLoLeakageControl, sdk::service::ILoLeakageControl>,
                                  Of<SdkUlkSynthesisControl, sdk::service::IUlkSynthesisControl>,
                                  Of<SdkKz515PowerControl, sdk::service::IKZ515PowerControl>,
                                  Of<SdkKz515SynthesisControl, sdk::service::IKZ515SynthesisControl>,
                                  Of<SdkWn0807PowerControl, sdk::service::IWn0807PowerModuleControl>,
                                  Of<SdkWn0807SynthesisControl, sdk::service::IWn0807SynthesisControl>,
                                  Of<SdkYqSynthesisControl, sdk::service::IYqSynthesisControl>>;

TYPED_TEST_SUITE(ValueAdapterClass, Adapters);

} // namespace

TYPED_TEST(ValueAdapterClass, IsNoMoreThanItsHandle)
{
    using Adapter = typename TypeParam::Adapter;
    EXPECT_EQ(sizeof(Adapter), sizeof(devices::ReacquiringControl<typename TypeParam::SdkIface>));
    EXPECT_FALSE(std::is_polymorphic_v<Adapter>);
    EXPECT_TRUE(std::is_copy_constructible_v<Adapter>);
    EXPECT_TRUE(std::is_move_constructible_v<Adapter>);
}

} // namespace tov::testing
