#include "service/servicecontrols.h"

#include "devices/controlregistry.h"
#include "devices/controls.h"
#include "service/calibration/sdkcalibrationcontrolhandle.h"
#include "service/calibration/sdkfactorycorrectioncontrol.h"
#include "service/calibration/sdkyqfactorypowercalibrationcontrol.h"
#include "service/calibration/sdkyqifswcalibrationcontrol.h"
#include "service/memory/ifilememorycontrol.h"
#include "service/memory/imemoryoperationscontrol.h"
#include "service/memory/ipotentiometerscontrol.h"
#include "service/memory/iserialnumbercontrol.h"
#include "service/memory/isystemtermscontrol.h"
#include "service/memory/iusbidcontrol.h"
#include "service/monitoring/sdktemperaturecontrol.h"
#include "service/tuning/sdkkz515powercontrol.h"
#include "service/tuning/sdkkz515synthesiscontrol.h"
#include "service/tuning/sdkloleakagecontrol.h"
#include "service/tuning/sdkulkpowercontrol.h"
#include "service/tuning/sdkulksynthesiscontrol.h"
#include "service/tuning/sdkwn0807powercontrol.h"
#include "service/tuning/sdkwn0807synthesiscontrol.h"
#include "service/tuning/sdkyqsynthesiscontrol.h"
#include "testing/fakecalibrationcontrol.h"
#include "testing/fakecalibrationcontroller.h"
#include "testing/fakefactorycorrectioncontrol.h"
#include "testing/fakefilememorycontrol.h"
#include "testing/fakeinstrument.h"
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

#include <gtest/gtest.h>

#include <any>
#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace tov::testing {

namespace {

using namespace devices::service;
using devices::ControlRegistry;

/// A row of the registration table, written out here once more: the keys are for ever.
struct Row
{
    std::string name;
    std::uint64_t registryKey;
    sdk::Key sdkKey;
    std::function<void(FakeInstrument&, sdk::Key)> offer;
    std::function<bool(const std::any&)> holdsItsType;
};

void PrintTo(const Row& row, std::ostream* stream)
{
    *stream << row.name;
}

template <typename SdkIface, typename Exposed, typename Fake>
Row row(const std::string& name, std::uint64_t registryKey, std::uint64_t sdkKey)
{
    return {name,
            registryKey,
            {sdkKey},
            [](FakeInstrument& instrument, sdk::Key key) { instrument.offer<SdkIface>(key, std::make_shared<Fake>()); },
            [](const std::any& control) { return std::any_cast<std::shared_ptr<Exposed>>(&control) != nullptr; }};
}

const std::vector<Row> table = {
    row<sdk::service::IFileMemoryControl, IFileMemoryControl, FakeFileMemoryControl>("FileMemory", 0xE85F16739B17B339,
                                                                                     0xF667DF356DF31CE4),
    row<sdk::service::IPotentiometersControl, IPotentiometersControl, FakePotentiometersControl>(
        "Potentiometers", 0xC51B6FB2AE2584D2, 0x88798A0EA0BFE22B),
    row<sdk::service::IMemoryUsbIdControl, IUsbIdControl, FakeMemoryUsbIdControl>("UsbId", 0xEC20F733872B6AC0,
                                                                                  0x8BBA7F494AD7C259),
    row<sdk::service::IMemorySerialNumberControl, ISerialNumberControl, FakeMemorySerialNumberControl>(
        "SerialNumber", 0x2E23977C2578988D, 0x5C028B97CC332087),
    row<sdk::service::IMemoryOperationsControl, IMemoryOperationsControl, FakeMemoryOperationsControl>(
        "MemoryOperations", 0x5664961726404671, 0x5D412BFD18B02258),
    row<sdk::service::IUlkSynthesisControl, SdkUlkSynthesisControl, FakeUlkSynthesisControl>(
        "UlkSynthesis", 0xB6C338D276CE98FB, 0x7922B1012A0983AF),
    row<sdk::service::IUlkPowerControl, SdkUlkPowerControl, FakeUlkPowerControl>("UlkPower", 0x897C141E29E7E690,
                                                                                 0x3C96BF415FCCAE8A),
    row<sdk::service::IWn0807SynthesisControl, SdkWn0807SynthesisControl, FakeWn0807SynthesisControl>(
        "Wn0807Synthesis", 0x2B979D4013CDEECD, 0x71DB0E7EC9BF38C7),
    row<sdk::service::IWn0807PowerModuleControl, SdkWn0807PowerControl, FakeWn0807PowerModuleControl>(
        "Wn0807Power", 0xDBAEBEE9402174AE, 0x2601FD095CF599F2),
    row<sdk::service::ILoLeakageControl, SdkLoLeakageControl, FakeLoLeakageControl>("LoLeakage", 0x39CE7F28FB8C58BD,
                                                                                    0x33F09CC532B7707A),
    row<sdk::service::IKZ515PowerControl, SdkKz515PowerControl, FakeKz515PowerControl>("Kz515Power", 0xEAF356A0B2EF79A5,
                                                                                       0x2F10DDD457C35149),
    row<sdk::service::IKZ515SynthesisControl, SdkKz515SynthesisControl, FakeKz515SynthesisControl>(
        "Kz515Synthesis", 0x374B2CB5EF097BEE, 0x53C0E0BA0DE251E0),
    row<sdk::service::IYqSynthesisControl, SdkYqSynthesisControl, FakeYqSynthesisControl>(
        "YqSynthesis", 0xA045AB34EA41DF44, 0xF636764463DEE854),
    row<sdk::service::ISystemTermsControl, ISystemTermsControl, FakeSystemTermsControl>(
        "SystemTerms", 0x10B13A8FE293BF50, 0x1E7084D947290478),
    row<sdk::service::IYqIfswCalibrationControl, SdkYqIfswCalibrationControl, FakeYqIfswCalibrationControl>(
        "IfswCalibration", 0x2AB54BEB7022049E, 0xA8C748BB3B2C656F),
    row<sdk::service::IYqFactoryPowerCalibrationControl, SdkYqFactoryPowerCalibrationControl,
        FakeYqFactoryPowerCalibrationControl>("FactoryPowerCalibration", 0xA95918A8462C534C, 0x4797D9E37C985D85),
    row<sdk::IFactoryCorrectionControl, SdkFactoryCorrectionControl, FakeFactoryCorrectionControl>(
        "FactoryCorrections", 0x1A94C41B6C234D42, 0xC425CF06760CA2B4),
    row<sdk::ITemperatureControl, SdkTemperatureControl, FakeTemperatureControl>("Temperature", 0xEBA4BA7306E6B9A2,
                                                                                 0xDDCECFEBDB4F5570),
    row<sdk::service::calibrations::ICalibrationController, SdkCalibrationControlHandle, FakeCalibrationController>(
        "CalibrationController1", 0x6DD4C2F3A3D1AAAB, 0x94A0057F903ADBEC),
    row<sdk::service::calibrations::ICalibrationController, SdkCalibrationControlHandle, FakeCalibrationController>(
        "CalibrationController2", 0x0B8EE0A3CE2543AB, 0x41A4A601B7307494),
};

// The two calibration controllers are of one type.
bool sameType(const Row& left, const Row& right)
{
    const auto isController = [](const Row& row) { return row.name.starts_with("CalibrationController"); };
    return left.name == right.name || (isController(left) && isController(right));
}

ControlRegistry registered()
{
    ControlRegistry registry;
    servicecontrols::registrate(&registry);
    return registry;
}

// "usb-id" for "UsbId".
std::string spelledByTheConsole(const std::string& name)
{
    std::string spelled;
    for (const char letter : name) {
        const bool beginsWord = letter >= 'A' && letter <= 'Z';
        if ((beginsWord && !spelled.empty()) || (letter >= '1' && letter <= '2' && name.starts_with("Calibration")))
            spelled += '-';
        spelled += beginsWord ? static_cast<char>(letter - 'A' + 'a') : letter;
    }
    return spelled;
}

class RegisteredControl : public ::testing::TestWithParam<Row>
{
protected:
    std::any create() { return registry.create(GetParam().registryKey, static_cast<sdk::IVna*>(&instrument)); }

    FakeInstrument instrument;
    ControlRegistry registry = registered();
};

} // namespace

TEST(ServiceControls, EntersTheTableInItsOrder)
{
    const ControlRegistry registry = registered();

    ASSERT_EQ(registry.entries().size(), 20U);
    ASSERT_EQ(table.size(), 20U);
    for (std::size_t i = 0; i < table.size(); ++i)
        EXPECT_EQ(registry.entries()[i].key, table[i].registryKey) << table[i].name;
}

TEST(ServiceControls, AreFoundByTheirNames)
{
    ASSERT_EQ(devices::controls::all.size(), table.size());
    for (std::size_t i = 0; i < table.size(); ++i) {
        const devices::ControlName* const found = devices::controls::find(spelledByTheConsole(table[i].name));
        ASSERT_EQ(found, &devices::controls::all[i]) << table[i].name;
        EXPECT_EQ(found->keys.registry, table[i].registryKey);
        EXPECT_EQ(found->keys.sdk, table[i].sdkKey);
    }
    EXPECT_EQ(devices::controls::find("no-such-control"), nullptr);
}

TEST(ServiceControls, PassesOnTheRefusalOfAKeyAndKeepsWhatItEnteredBefore)
{
    ControlRegistry registry;
    registry.addEntry({.key = table.back().registryKey, .create = nullptr});
    EXPECT_THROW(servicecontrols::registrate(&registry), std::invalid_argument);

    ASSERT_EQ(registry.entries().size(), table.size());
    EXPECT_EQ(registry.entries()[1].key, table.front().registryKey) << "what was entered before stays";
}

// The type in the result is compared across the border of the library, which hides all but its adapters.
TEST_P(RegisteredControl, IsHandedOutAsExactlyItsType)
{
    GetParam().offer(instrument, GetParam().sdkKey);
    const std::any control = create();

    for (const Row& other : table)
        EXPECT_EQ(other.holdsItsType(control), sameType(other, GetParam())) << other.name;
}

TEST_P(RegisteredControl, IsLookedUpUnderItsOwnSdkKey)
{
    create();
    ASSERT_EQ(instrument.lookups().size(), 1U);
    EXPECT_EQ(instrument.lookups().front(), GetParam().sdkKey);
}

TEST_P(RegisteredControl, IsEmptyWhenTheInstrumentLacksIt)
{
    EXPECT_FALSE(create().has_value());
}

TEST_P(RegisteredControl, IsEmptyForAnOwnerOfAnotherType)
{
    GetParam().offer(instrument, GetParam().sdkKey);
    EXPECT_FALSE(registry.create(GetParam().registryKey, &instrument).has_value())
        << "a pointer to the derived class is not a pointer to the instrument interface";
    EXPECT_FALSE(registry.create(GetParam().registryKey, std::any()).has_value());
    EXPECT_TRUE(instrument.lookups().empty());
}

INSTANTIATE_TEST_SUITE_P(ServiceControls, RegisteredControl, ::testing::ValuesIn(table),
                         [](const auto& instance) { return instance.param.name; });

TEST(ServiceControls, MakesIndependentAdaptersOfTheSameControl)
{
    FakeInstrument instrument;
    const auto fake = std::make_shared<FakeLoLeakageControl>();
    instrument.offer<sdk::service::ILoLeakageControl>({0x33F09CC532B7707A}, fake);
    const ControlRegistry registry = registered();
    const auto make = [&] {
        return std::any_cast<std::shared_ptr<SdkLoLeakageControl>>(
            registry.create(0x39CE7F28FB8C58BD, static_cast<sdk::IVna*>(&instrument)));
    };

    const auto first = make();
    const auto second = make();
    EXPECT_NE(first, second);
    first->setEnabled(true);
    second->setEnabled(false);
    EXPECT_EQ(fake->calls(), (std::vector<std::string>{"setEnabled(true)", "setEnabled(false)"}));
}

TEST(ServiceControls, KeepsNothingAfterTheRegistryIsGone)
{
    FakeInstrument instrument;
    const auto fake = std::make_shared<FakeLoLeakageControl>();
    fake->answer("isEnabled", true);
    instrument.offer<sdk::service::ILoLeakageControl>({0x33F09CC532B7707A}, fake);

    const auto adapter = std::any_cast<std::shared_ptr<SdkLoLeakageControl>>(
        registered().create(0x39CE7F28FB8C58BD, static_cast<sdk::IVna*>(&instrument)));
    EXPECT_TRUE(adapter->isEnabled());
    EXPECT_EQ(adapter.use_count(), 1);
}

} // namespace tov::testing
