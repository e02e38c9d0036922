#include "service/memory/sdkfilememorycontrol.h"
#include "testing/fakefilememorycontrol.h"

#include <gmock/gmock.h>

#include <memory>

namespace tov::testing {

namespace {

using devices::service::SdkFileMemoryControl;
using ::testing::IsEmpty;

class SdkFileMemory : public ::testing::Test
{
protected:
    std::shared_ptr<FakeFileMemoryControl> fake = std::make_shared<FakeFileMemoryControl>();
    SdkFileMemoryControl files{devices::ReacquiringControl<sdk::service::IFileMemoryControl>(
        [this] { return sdk::ControlHandle<sdk::service::IFileMemoryControl>(fake); })};

    void expectUnavailable()
    {
        const QString text = "File memory control is unavailable";
        EXPECT_EQ(files.fileList().error(), text);
        EXPECT_EQ(files.spaceInfo().error(), text);
        EXPECT_EQ(files.readFile({}).error(), text);
        EXPECT_EQ(files.writeFile({}, {}).error(), text);
        EXPECT_EQ(files.deleteFile({}).error(), text);
    }
};

} // namespace

TEST_F(SdkFileMemory, IsUnavailableWhenTheControlIsAbsent)
{
    fake.reset();
    expectUnavailable();
}

TEST_F(SdkFileMemory, IsUnavailableWhenTheSdkSaysSoAndCallsNoFileOperation)
{
    fake->available = false;
    expectUnavailable();
    EXPECT_THAT(fake->calls(), IsEmpty());

    fake->available = true;
    EXPECT_TRUE(files.fileList());
}

TEST_F(SdkFileMemory, ReadsAnEmptyFileAsASuccess)
{
    const auto contents = files.readFile({"empty", 0, 0});
    ASSERT_TRUE(contents);
    EXPECT_TRUE(contents->isEmpty());
}

TEST_F(SdkFileMemory, PassesEmptyArgumentsOn)
{
    EXPECT_TRUE(files.writeFile({}, {}));
    EXPECT_THAT(fake->calls(), ::testing::ElementsAre("writeFile(\"\", {})"));
}

TEST_F(SdkFileMemory, GivesAnEmptyListOfNoFiles)
{
    const auto list = files.fileList();
    ASSERT_TRUE(list);
    EXPECT_TRUE(list->isEmpty());
}

} // namespace tov::testing
