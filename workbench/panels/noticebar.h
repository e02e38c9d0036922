#pragma once

#include <QFrame>
#include <QString>

#include <functional>

class QHBoxLayout;
class QLabel;

namespace tov::workbench {

/// A line across the window that says what holds for all of it, with buttons for what can be done about it.
class NoticeBar final : public QFrame
{
    Q_OBJECT

public:
    explicit NoticeBar(QWidget* parent = nullptr);

    /// Shows `sentence` instead of what was there, without buttons.
    void show(const QString& sentence);

    /// Adds a button that does `act`; the first one gets the focus.
    void offer(const QString& name, const QString& label, std::function<void()> act);

    /// Takes it away.
    void clear();

    QString sentence() const;

private:
    QLabel* m_sentence;
    QHBoxLayout* m_buttons;
};

} // namespace tov::workbench
