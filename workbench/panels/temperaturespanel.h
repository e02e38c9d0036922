#pragma once

#include "workbench/instrument/temperaturefeed.h"
#include "workbench/models/temperaturesmodel.h"
#include "workbench/panels/panel.h"

#include <QElapsedTimer>

#include <chrono>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QHBoxLayout;
class QPushButton;

namespace tov::workbench {

class Plot;

/// The temperatures as they come: curves over a time that the user chooses, and a table with limits. They are recorded
/// while the instrument is open, whichever panel is in front.
///
/// An instrument with a clock of its own gets the time that passes while the panel is in front, unless the user stops
/// that, or as much as he likes at once.
class TemperaturesPanel final : public Panel
{
    Q_OBJECT

public:
    explicit TemperaturesPanel(Instrument& instrument, QWidget* parent = nullptr);

    void refresh() override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void addChoices();
    void addLimit(QHBoxLayout& row);
    void addTime(QHBoxLayout& row);
    void addFiles(QHBoxLayout& row);
    void addViews();
    void enableTime();
    void keepUp();
    void passTime(std::chrono::seconds time);
    void draw();
    void saveReadings(const QString& path);
    void savePicture(const QString& path);

    TemperatureFeed m_feed;
    TemperaturesModel m_model;
    QComboBox* m_span = nullptr;
    QDoubleSpinBox* m_limit = nullptr;
    QCheckBox* m_keepsUp = nullptr;
    QPushButton* m_pass = nullptr;
    Plot* m_plot = nullptr;
    QTimer* m_drawing;     // soon, once for what comes at the same time
    QTimer* m_clock;       // while the instrument's clock is kept up with
    QElapsedTimer m_since; // it was the last time
};

} // namespace tov::workbench
