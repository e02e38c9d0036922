#pragma once

#include "tools/files/termsfile.h"
#include "workbench/models/curves.h"
#include "workbench/models/rowsmodel.h"
#include "workbench/panels/page.h"

#include <string>
#include <vector>

class QLabel;
class QPushButton;
class QTableView;

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
    struct ReadFile
    {
        TermsFile file;
        std::vector<CurveSheet> sheets;
        CurveTable table;
    };

    static ReadFile read(const std::string& path);
    QWidget* makeStored();
    QWidget* makeFile();
    void showFile(const ReadFile& read, const QString& path);
    void askToWrite();
    void write(const TermsFile& file);

    RowsModel m_records;     // of the instrument
    RowsModel m_fileRecords; // of the file
    RowsModel m_fileTerms;   // the magnitudes of the file
    TermsFile m_file;        // that is shown
    QString m_fileName;
    QLabel* m_flag = nullptr;
    QLabel* m_fileFacts = nullptr;
    CurvePreview* m_preview = nullptr;
    QTableView* m_table = nullptr; // of the magnitudes
    QPushButton* m_write = nullptr;
};

} // namespace tov::workbench
