#pragma once

#include "workbench/models/tuning.h"

#include <QWidget>

#include <vector>

class QGridLayout;
class QHBoxLayout;
class QScrollArea;

namespace tov::workbench {

class FrequencyPlot;
class SettingEditor;

/// The settings of one module, each with its editor, as the table of the module has them; a plot of those that lie over
/// the frequency, and buttons for the module's tables and its reset. It asks for everything by signals.
class TuningPage final : public QWidget
{
    Q_OBJECT

public:
    explicit TuningPage(const TuneModule& module, QWidget* parent = nullptr);

    const TuneModule& module() const { return m_module; }

    /// Shows what was read.
    void show(const ReadModule& read);

Q_SIGNALS:
    void edited(const tov::TuneSetting& setting, const QJsonValue& value);
    void resetAsked();
    void loadAsked(const tov::TuneTable& table, const QString& file);

private:
    void addSetting(QGridLayout& form, std::size_t index);
    void addButtons(QHBoxLayout& buttons);
    void askForFile(const TuneTable& table);

    const TuneModule& m_module;
    std::vector<SettingEditor*> m_editors; // of the settings; null for what only the plot shows
    FrequencyPlot* m_plot = nullptr;       // null: there is nothing to plot
};

} // namespace tov::workbench
