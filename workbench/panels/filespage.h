#pragma once

#include "workbench/models/rowsmodel.h"
#include "workbench/panels/page.h"

#include <QList>
#include <QStringList>

#include <optional>

class QLabel;
class QProgressBar;
class QPushButton;
class QTableView;

namespace tov::workbench {

/// The file store of the instrument: its files and its room. Files of this computer are added by a button or dropped
/// on the page, those of the instrument are got or deleted.
class FilesPage final : public Page
{
    Q_OBJECT

public:
    explicit FilesPage(Panel& panel);

    void refresh() override;

    /// Stores these files of this computer under the last part of their paths; looks what is there, and asks before one
    /// is replaced, also one of these by another of the same name.
    void addFiles(const QStringList& paths);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    using FileInfo = devices::service::IFileMemoryControl::FileInfo;
    using SpaceInfo = devices::service::IFileMemoryControl::SpaceInfo;

    void addButtons(QVBoxLayout& layout);
    QList<FileInfo> chosenFiles() const;
    void enableButtons();
    void show(const QList<FileInfo>& files);
    void show(const SpaceInfo& space);
    void storeUnlessReplacing(const QStringList& paths);
    void store(const QStringList& paths);
    void storedOne();
    void get(const FileInfo& file, const QString& path);
    void askToDelete();
    void remove(const QList<FileInfo>& files);

    RowsModel m_rows;
    QList<FileInfo> m_files;          // of the rows
    std::optional<SpaceInfo> m_space; // as it was read last
    int m_toStore = 0;
    QTableView* m_table = nullptr;
    QLabel* m_room;
    QProgressBar* m_used;
    QProgressBar* m_storing;
    QPushButton* m_get = nullptr;
    QPushButton* m_delete = nullptr;
};

} // namespace tov::workbench
