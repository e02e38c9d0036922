#include "openpage.h"

#include <QCheckBox>
#include <QProgressBar>

namespace tov::testing {

namespace {

namespace controls = host::controls;
using Answer = provider::ITestHooks::Answer;

class WholeMemory : public OpenPage
{
protected:
    void SetUp() override { openPage(QStringLiteral("memory"), "memory-page"); }

    QString result() { return textOf("memory-result"); }
    QByteArray dump()
    {
        const QString target = path(QByteArray::number(++m_dumps));
        press("dump");
        choose(target);
        return contentsOf(target);
    }

private:
    int m_dumps = 0;
};

} // namespace

TEST_F(WholeMemory, IsReplacedByAFileOfItsSizeAndCopiedIntoAnother)
{
    const QByteArray contents(65536, 'm');
    press("load");
    choose(file("new.bin", contents));
    agree();
    EXPECT_EQ(result(), QLocale().toString(65536) + " bytes were written.");
    EXPECT_EQ(dump(), contents);
    EXPECT_EQ(result(), QLocale().toString(65536) + " bytes were copied into the file.");
}

TEST_F(WholeMemory, IsNotReplacedByAFileOfAnotherSize)
{
    press("load");
    choose(file("short.bin", "short"));
    waitForFault("Could not look whether the file fits the memory: " + path("short.bin")
                 + " has 5 bytes and the memory 65536.");
    EXPECT_FALSE(onPage<QWidget>("question").isVisible());
}

TEST_F(WholeMemory, IsFilledBehindAShorterFileWhereTheUserWantsThat)
{
    onPage<QCheckBox>("fills").setChecked(true);
    press("load");
    choose(file("short.bin", "short"));
    agree();
    EXPECT_EQ(dump(), "short" + QByteArray(65531, '\xFF'));
}

TEST_F(WholeMemory, IsErasedOnlyWhenTheUserAgrees)
{
    press("load");
    choose(file("new.bin", QByteArray(65536, 'm')));
    agree();
    press("erase");
    answer("cancel");
    EXPECT_EQ(dump().front(), 'm');
    press("erase");
    agree();
    EXPECT_EQ(result(), "The memory is erased.");
    EXPECT_EQ(dump(), QByteArray(65536, '\xFF'));
}

TEST_F(WholeMemory, IsChecked)
{
    press("check");
    waitUntilIdle();
    waitUntil([this] { return result() == "The memory is intact."; });
    simulated->simulated().damageMemory(7);
    press("check");
    waitForFault("Could not check the memory: the instrument reported a failure.");
    EXPECT_EQ(result(), "");
}

TEST_F(WholeMemory, ShowsHowFarTheInstrumentIs)
{
    misbehave(controls::memoryOperations, "integrityCheck", Answer::Late);
    auto& progress = onPage<QProgressBar>("memory-progress");
    press("check");
    EXPECT_TRUE(progress.isVisible());
    EXPECT_FALSE(onPage<QPushButton>("erase").isEnabled());
    waitUntil([&] { return progress.value() == 100; });
    waitUntil([&] { return !progress.isVisible(); });
    EXPECT_TRUE(onPage<QPushButton>("erase").isEnabled());
}

TEST_F(WholeMemory, SaysInASentenceWhatFailed)
{
    misbehave(controls::memoryOperations, "erase", Answer::WithError);
    press("erase");
    agree();
    waitForFault("Could not erase the memory: the instrument reported a failure.");
    misbehave(controls::memoryOperations, "erase", Answer::Throwing);
    press("erase");
    agree();
    waitUntil([this] { return fault().startsWith("Could not erase the memory: ") && !fault().contains("reported"); });
}

TEST_F(WholeMemory, CanBeUsedAgainWhenTheControlsCameBack)
{
    releaseControls();
    EXPECT_TRUE(isAbsent(controls::memoryOperations));
    EXPECT_FALSE(onPage<QPushButton>("check").isEnabled());
    offerControls();
    press("check");
    waitUntil([this] { return result() == "The memory is intact."; });
}

} // namespace tov::testing
