#include "workbench/panels/valuelabel.h"

#include <utility>

namespace tov::workbench {

ValueLabel::ValueLabel(QString name, QWidget* parent)
    : QLabel(parent)
    , m_name(std::move(name))
{
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    showValue(QStringLiteral("–"));
}

void ValueLabel::showValue(const QString& value)
{
    setText(value);
    setAccessibleName(QStringLiteral("%1: %2").arg(m_name, value)); // which is read instead of the text
}

} // namespace tov::workbench
