#pragma once

#include "tools/files/termsfile.h"
#include "workbench/models/rowsmodel.h"
#include "workbench/panels/page.h"

class QLabel;
class QPushButton;

namespace tov::workbench {

class CurvePreview;

/// The system error terms: the records that the instrument tells of, and the terms of a file, which are looked at
/// before they are written. The terms themselves the instrument does not give back.
class TermsPage final : public Page
{
    Q_OBJECT

public:
    explicit TermsPage(Panel& panel);

    void refresh() override;

    /// Reads a file of this computer and shows what is in it.
    void openFile(const QString& path);

private:
    QWidget* makeStored();
    QWidget* makeFile();
    void showFile(const TermsFile& file, const QString& path);
    void askToWrite();
    void write();

    RowsModel m_records;
    TermsFile m_file;
    QLabel* m_flag = nullptr;
    QLabel* m_fileFacts = nullptr;
    CurvePreview* m_preview = nullptr;
    QPushButton* m_write = nullptr;
};

} // namespace tov::workbench
