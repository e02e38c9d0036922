#include "workbench/models/settingchange.h"

#include <utility>

namespace tov::workbench {

SettingChange::SettingChange(const QString& text, QJsonValue before, QJsonValue after, Write write)
    : QUndoCommand(text)
    , m_before(std::move(before))
    , m_after(std::move(after))
    , m_write(std::move(write))
{
}

void SettingChange::undo()
{
    m_isDone = false;
    m_write(m_before);
}

void SettingChange::redo()
{
    if (!std::exchange(m_isDone, true))
        m_write(m_after);
}

} // namespace tov::workbench
