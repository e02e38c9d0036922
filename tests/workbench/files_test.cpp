#include "openpage.h"
#include "workbench/panels/filespage.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace tov::testing {

namespace {

namespace controls = host::controls;
using Answer = provider::ITestHooks::Answer;

class Files : public OpenPage
{
protected:
    void SetUp() override { openPage(QStringLiteral("memory"), "files-page"); }

    workbench::FilesPage& page() { return find<workbench::FilesPage>("files-page"); }

    void add(const QStringList& paths)
    {
        page().addFiles(paths);
        waitUntilIdle();
    }

    int count() { return onPage<QTableView>("files").model()->rowCount(); }
};

} // namespace

TEST_F(Files, AreListedWithTheRoomThatIsLeft)
{
    EXPECT_EQ(count(), 0);
    add({file("a.txt", QByteArray(1024, 'a')), file("b.txt", "b")});
    ASSERT_EQ(count(), 2);
    EXPECT_EQ(shown("files", 0, 0), "a.txt");
    EXPECT_EQ(shown("files", 0, 1), "1024");
    EXPECT_EQ(shown("files", 1, 0), "b.txt");
    EXPECT_EQ(textOf("room"), QLocale().formattedDataSize(1025) + " of " + QLocale().formattedDataSize(262144)
                                  + " used, " + QLocale().formattedDataSize(261119) + " free");
    EXPECT_FALSE(onPage<QWidget>("storing").isVisible());
}

TEST_F(Files, AreStoredWhenTheyAreDropped)
{
    QMimeData dropped;
    dropped.setUrls({QUrl::fromLocalFile(file("dropped.txt", "contents"))});
    QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&page(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(9, 9), Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&page(), &drop);
    waitUntilIdle();
    EXPECT_EQ(shown("files", 0, 0), "dropped.txt");
}

TEST_F(Files, AreChosenByADialogThatNobodyWaitsFor)
{
    const QString chosen = file("chosen.txt", "contents");
    press("add-files");
    choose(chosen);
    EXPECT_EQ(shown("files", 0, 0), "chosen.txt");
}

TEST_F(Files, AreReplacedOnlyWhenTheUserAgrees)
{
    add({file("a.txt", "old")});
    const QString other = file("a.txt", "longer");
    page().addFiles({other});
    answer("cancel");
    EXPECT_EQ(shown("files", 0, 1), "3");
    page().addFiles({other});
    agree();
    EXPECT_EQ(shown("files", 0, 1), "6");
    EXPECT_EQ(count(), 1);
}

TEST_F(Files, AreNotReplacedThoughTheListOnThePageIsOld)
{
    using devices::service::IFileMemoryControl;
    const auto stored = instrument.call(controls::fileMemory, "store elsewhere", [](IFileMemoryControl& files) {
        return files.writeFile(QStringLiteral("a.txt"), "old");
    });
    waitUntil([&] { return stored.isFinished(); });
    EXPECT_EQ(count(), 0);
    page().addFiles({file("a.txt", "longer")});
    answer("cancel");
    waitUntilIdle();
    EXPECT_EQ(shown("files", 0, 1), "3");
}

TEST_F(Files, AreNotStoredWhenItIsNotKnownWhatTheyReplace)
{
    misbehave(controls::fileMemory, "fileList", Answer::WithError);
    add({file("a.txt", "a")});
    EXPECT_TRUE(fault().startsWith("Could not list the files: ")) << fault().toStdString();
    misbehave(controls::fileMemory, "fileList", Answer::AsUsual);
    readAnew();
    waitUntilIdle();
    EXPECT_EQ(count(), 0);
}

TEST_F(Files, OfTheSameNameReplaceEachOtherOnlyWhenTheUserAgrees)
{
    const QTemporaryDir other;
    const QString first = file("a.txt", "old");
    const QString second = other.filePath("a.txt");
    ASSERT_TRUE(QFile::copy(first, second));
    page().addFiles({first, second});
    answer("cancel");
    waitUntilIdle();
    EXPECT_EQ(count(), 0);
}

TEST_F(Files, AreCopiedToThisComputer)
{
    add({file("a.txt", "contents")});
    onPage<QTableView>("files").selectRow(0);
    press("get-file");
    choose(path("got.txt"));
    EXPECT_EQ(contentsOf(path("got.txt")), "contents");
}

TEST_F(Files, AreDeletedWhenTheUserAgrees)
{
    add({file("a.txt", "a"), file("b.txt", "b")});
    EXPECT_FALSE(onPage<QPushButton>("delete-files").isEnabled());
    onPage<QTableView>("files").selectRow(0);
    press("delete-files");
    EXPECT_EQ(count(), 2);
    agree();
    ASSERT_EQ(count(), 1);
    EXPECT_EQ(shown("files", 0, 0), "b.txt");
}

TEST_F(Files, SayInASentenceWhatFailed)
{
    misbehave(controls::fileMemory, "writeFile", Answer::WithError);
    page().addFiles({file("a.txt", "a")});
    waitUntil([this] { return !fault().isEmpty(); });
    EXPECT_TRUE(fault().startsWith("Could not store “a.txt”: ")) << fault().toStdString();

    misbehave(controls::fileMemory, "writeFile", Answer::Throwing);
    page().addFiles({file("b.txt", "b")});
    waitUntil([this] { return fault().startsWith("Could not store “b.txt”: "); });

    page().addFiles({path("missing.txt")});
    waitUntil([this] { return fault().startsWith("Could not store “missing.txt”: "); });
    waitUntilIdle();
    EXPECT_EQ(count(), 0);
    EXPECT_FALSE(onPage<QWidget>("storing").isVisible());
}

TEST_F(Files, AreReadAgainWhenTheControlsCameBack)
{
    add({file("a.txt", "a")});
    EXPECT_FALSE(isAbsent(controls::fileMemory));
    onPage<QTableView>("files").selectRow(0);
    press("delete-files");
    EXPECT_TRUE(onPage<QWidget>("question").isVisible());
    releaseControls();
    waitUntil([this] { return isAbsent(controls::fileMemory); });
    EXPECT_FALSE(onPage<QPushButton>("add-files").isEnabled());
    EXPECT_FALSE(onPage<QWidget>("question").isVisible()); // what was asked is out of date
    offerControls();
    EXPECT_FALSE(isAbsent(controls::fileMemory));
    EXPECT_EQ(shown("files", 0, 0), "a.txt");
    EXPECT_EQ(fault(), "");
}

} // namespace tov::testing
