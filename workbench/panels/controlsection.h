#pragma once

#include "workbench/instrument/instrument.h"

#include <QString>
#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace tov::workbench {

/// What belongs to one control. While the instrument does not have it, a line says so, and nothing in it can be used.
class ControlSection final : public QWidget
{
    Q_OBJECT

public:
    /// Without a title it has no frame. `instrument` must outlive it.
    ControlSection(Instrument& instrument, const host::ControlName& kind, const QString& title, QWidget* parent);

    /// Where its widgets go.
    QVBoxLayout& contents() const { return *m_contents; }

private:
    void showPresence(bool isPresent);

    QLabel* m_absent;
    QWidget* m_inside;
    QVBoxLayout* m_contents;
};

} // namespace tov::workbench
