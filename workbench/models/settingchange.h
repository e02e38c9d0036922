#pragma once

#include <QJsonValue>
#include <QUndoCommand>

#include <functional>

namespace tov::workbench {

/// A setting that was changed, and can be changed back. It is made when the instrument took the new value, so that
/// putting it on a stack writes nothing.
///
/// Thread: *owner's thread*.
class SettingChange final : public QUndoCommand
{
public:
    /// Has a value written; returns at once.
    using Write = std::function<void(const QJsonValue& value)>;

    SettingChange(const QString& text, QJsonValue before, QJsonValue after, Write write);

    void undo() override;
    void redo() override;

private:
    const QJsonValue m_before;
    const QJsonValue m_after;
    const Write m_write;
    bool m_isDone = true;
};

} // namespace tov::workbench
