#pragma once

#include "openwindow.h"
#include "workbench/panels/pagedpanel.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QAction>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>

#include <algorithm>

namespace tov::testing {

/// The window with one page of a panel in front.
class OpenPage : public OpenWindow
{
protected:
    // Opens the window and waits until the page has read.
    void openPage(const QString& panel, const char* page)
    {
        open(panel);
        bringUp(panel, page);
    }

    void bringUp(const QString& panel, const char* page)
    {
        auto& paged = find<workbench::PagedPanel>(panel.toLatin1().constData());
        EXPECT_TRUE(paged.bringUpPage(QString::fromLatin1(page)));
        m_panel = &paged;
        m_page = page;
        waitUntilIdle();
    }

    // A widget of the page by its class and name.
    template <typename Widget>
    Widget& onPage(const char* name)
    {
        auto* const found = find<workbench::Page>(m_page).findChild<Widget*>(QString::fromLatin1(name));
        if (found == nullptr)
            throw std::logic_error(std::string("the page has no ") + name);
        return *found;
    }

    void press(const char* button) { QTest::mouseClick(&onPage<QPushButton>(button), Qt::LeftButton); }

    // Answers the question of the page, which it must have asked.
    void answer(const char* button)
    {
        QPushButton* shown = nullptr; // as soon as the layout has shown it
        waitUntil([&] {
            const auto all = onPage<QWidget>("question").findChildren<QPushButton*>(QString::fromLatin1(button));
            const auto found = std::ranges::find_if(all, [](const QPushButton* each) { return each->isVisible(); });
            shown = found == all.end() ? nullptr : *found;
            return shown != nullptr;
        });
        QTest::mouseClick(shown, Qt::LeftButton);
        waitUntil([this] { return !onPage<QWidget>("question").isVisible(); });
    }
    void agree()
    {
        answer("confirm");
        waitUntilIdle();
    }

    // As F5 does, which only reaches a window that the system has made active.
    void readAnew() { find<QAction>("refresh").trigger(); }

    void waitUntilIdle()
    {
        waitUntil([this] { return instrument.isIdle() && !m_panel->isWaiting(); });
    }

    QString shown(const char* table, int row, int column)
    {
        const auto* const model = onPage<QTableView>(table).model();
        return model->index(row, column).data().toString();
    }

    // Enters a value into a cell as the user does who leaves it then.
    bool enter(const char* table, int row, int column, const QVariant& value, int role = Qt::EditRole)
    {
        auto* const model = onPage<QTableView>(table).model();
        return model->setData(model->index(row, column), value, role);
    }

    QString textOf(const char* label) { return onPage<QLabel>(label).text(); }
    QString fault() const { return m_panel->fault(); }

    void waitForFault(const QString& sentence)
    {
        waitUntil([&] { return fault() == sentence; });
        EXPECT_EQ(fault(), sentence);
    }

    bool isAbsent(const host::ControlName& kind)
    {
        return onPage<QWidget>(kind.name.data()).findChild<QLabel*>("absent")->isVisible();
    }

    void releaseControls()
    {
        EXPECT_TRUE(simulated->releaseControls());
        waitUntil([this] { return !instrument.isPresent(host::controls::loLeakage); });
    }
    void offerControls()
    {
        EXPECT_TRUE(simulated->offerControls());
        waitUntil([this] { return instrument.isPresent(host::controls::loLeakage); });
        waitUntilIdle();
    }

    void misbehave(const host::ControlName& kind, const char* operation, provider::ITestHooks::Answer how)
    {
        EXPECT_TRUE(simulated->setAnswer(kind.keys.sdk, QString::fromLatin1(operation), how));
    }

    // A file of this computer.
    QString file(const char* name, const QByteArray& contents)
    {
        QFile file(m_folder.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
        return file.fileName();
    }
    QString path(const char* name) const { return m_folder.filePath(QString::fromLatin1(name)); }
    static QByteArray contentsOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    // Chooses a file in the dialog that is open.
    void choose(const QString& path)
    {
        QFileDialog* dialog = nullptr;
        waitUntil([&] { return (dialog = window->findChild<QFileDialog*>()) != nullptr && dialog->isVisible(); });
        dialog->selectFile(path);
        QMetaObject::invokeMethod(dialog, "accept");
        waitUntilIdle();
    }

private:
    workbench::Panel* m_panel = nullptr;
    const char* m_page = "";
    QTemporaryDir m_folder;
};

} // namespace tov::testing
