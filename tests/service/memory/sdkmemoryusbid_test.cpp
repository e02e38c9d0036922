#include "devices/prettymodelname.h"
#include "service/memory/sdkmemoryusbid.h"
#include "testing/fakememoryusbidcontrol.h"

#include <QStringList>

#include <gmock/gmock.h>

#include <memory>

namespace tov::testing {

namespace {

using devices::service::IUsbIdControl;
using devices::service::SdkMemoryUsbId;
using sdk::service::IMemoryUsbIdControl;

class SdkUsbId : public ::testing::Test
{
protected:
    std::shared_ptr<FakeMemoryUsbIdControl> fake = std::make_shared<FakeMemoryUsbIdControl>();
    SdkMemoryUsbId usb{devices::ReacquiringControl<IMemoryUsbIdControl>(
        [this] { return sdk::ControlHandle<IMemoryUsbIdControl>(fake); })};
};

} // namespace

TEST_F(SdkUsbId, GivesTheIdentifierWithItsModelsName)
{
    fake->answer("usbId", IMemoryUsbIdControl::UsbId{1, 2, 0xFFFF, sdk::Model::FourPort8, -7, 0xFFFF'FFFF'FFFF'FFFF,
                                                     0x8000'0000'0000'0001});
    const IUsbIdControl::UsbId id = usb.usbId();
    EXPECT_EQ(id.id1, 1);
    EXPECT_EQ(id.id2, 2);
    EXPECT_EQ(id.id3, 0xFFFF);
    EXPECT_EQ(id.modelName, "4-port analyser, 8 GHz");
    EXPECT_EQ(id.tag, -7);
    EXPECT_EQ(id.data1, 0xFFFF'FFFF'FFFF'FFFF);
    EXPECT_EQ(id.data2, 0x8000'0000'0000'0001);
}

TEST_F(SdkUsbId, GivesTheDefaultIdentifierWhenTheControlIsAbsent)
{
    fake.reset();
    const IUsbIdControl::UsbId id = usb.usbId();
    EXPECT_EQ(id.id1, 0);
    EXPECT_EQ(id.id2, 0);
    EXPECT_EQ(id.id3, 0);
    EXPECT_EQ(id.modelName, "");
    EXPECT_EQ(id.tag, 1);
    EXPECT_EQ(id.data1, 0U);
    EXPECT_EQ(id.data2, 0U);
    EXPECT_TRUE(usb.usbIds().empty());
}

TEST_F(SdkUsbId, ListsTheIdentifiersInTheOrderOfTheInstrument)
{
    fake->answer("usbIds", std::vector<IMemoryUsbIdControl::UsbId>{{3, 0, 0, sdk::Model::TwoPort20, 0, 0, 0},
                                                                   {1, 0, 0, sdk::Model::TwoPort3, 0, 0, 0},
                                                                   {2, 0, 0, static_cast<sdk::Model>(99), 0, 0, 0}});
    const auto ids = usb.usbIds();
    ASSERT_EQ(ids.size(), 3U);
    EXPECT_EQ(ids.capacity(), 3U);
    EXPECT_EQ(ids[0].id1, 3);
    EXPECT_EQ(ids[0].modelName, "2-port analyser, 20 GHz");
    EXPECT_EQ(ids[1].id1, 1);
    EXPECT_EQ(ids[1].modelName, "2-port analyser, 3 GHz");
    EXPECT_EQ(ids[2].modelName, "Unknown model (99)");
}

TEST(PrettyModelName, NamesEveryModelDifferently)
{
    QStringList names;
    for (int number = -1; number <= 6; ++number)
        names.append(devices::prettyModelName(static_cast<sdk::Model>(number)));
    EXPECT_EQ(names.removeDuplicates(), 0);
    EXPECT_EQ(names[1], "Unknown model");
    EXPECT_EQ(names[7], "Unknown model (6)");
}

} // namespace tov::testing
