#pragma once

#include "workbench/models/tuning.h"
#include "workbench/panels/panel.h"

#include <QUndoStack>

#include <functional>
#include <optional>
#include <vector>

class QAction;
class QLayout;
class QListWidget;
class QStackedWidget;
class QTimer;

namespace tov::workbench {

class TuningPage;

/// The settings of the hardware modules, a page each. What the user changes is written when he has finished to edit,
/// and can be undone when that is answered; then the module is read again, as one setting may change another.
class TuningPanel final : public Panel
{
    Q_OBJECT

public:
    explicit TuningPanel(Instrument& instrument, QWidget* parent = nullptr);

    void refresh() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    // Is given what a setting was before, or nothing when it was not changed.
    using Ended = std::function<void(const std::optional<QJsonValue>& before)>;

    struct Page
    {
        TuningPage* page = nullptr;
        bool isOld = true;
    };

    QLayout* undoButtons();
    void addPage(const TuneModule& module);
    void readInFront();
    void markOld(const QString& control);
    void read(std::size_t index);
    void write(std::size_t index, const TuneSetting& setting, const QJsonValue& value, const Ended& ended);
    void change(std::size_t index, const TuneSetting& setting, const QJsonValue& after);
    void changeAgain(std::size_t index, const TuneSetting& setting, const QJsonValue& value);
    void countWrites(int more);
    void enableUndo();
    void reset(std::size_t index);
    void load(std::size_t index, const TuneTable& table, const QString& file);

    QUndoStack m_changes;
    QAction* m_undo;
    QAction* m_redo;
    int m_writes = 0;        // that are not answered
    bool m_corrects = false; // the stack, where nothing is to be written
    QListWidget* m_names;
    QStackedWidget* m_stack;
    std::vector<Page> m_pages; // in the order of the table
    QTimer* m_reads;           // soon what is old and in front
};

} // namespace tov::workbench
