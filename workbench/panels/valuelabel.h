#pragma once

#include <QLabel>
#include <QString>

namespace tov::workbench {

/// Shows a value that the user may copy. Screen readers are told its name with it.
class ValueLabel final : public QLabel
{
    Q_OBJECT

public:
    explicit ValueLabel(QString name, QWidget* parent = nullptr);

    void showValue(const QString& value);

private:
    const QString m_name;
};

} // namespace tov::workbench
