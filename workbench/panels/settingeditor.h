#pragma once

#include "workbench/models/tuning.h"

#include <QJsonValue>
#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

namespace tov::workbench {

class NumberBox;

/// Edits one setting in the way of its kind: a switch by a check box, a choice by a list, a number by a box that takes
/// what the instrument takes, a range by two of those. What can only be read is text.
class SettingEditor final : public QWidget
{
    Q_OBJECT

public:
    explicit SettingEditor(const TuneSetting& setting, QWidget* parent = nullptr);

    /// Shows what was read, and takes from now on what the instrument takes.
    void show(const ReadSetting& read);

Q_SIGNALS:
    /// The user has finished to edit, and it is another value than the one that was read.
    void edited(const QJsonValue& value);

private:
    void addSwitch();
    void addList();
    void addNumbers(int count);
    void addText();
    void addWidget(QWidget* widget);
    static void showNumber(NumberBox& box, const std::optional<double>& number);
    void finish(const QJsonValue& value);

    const TuneSetting& m_setting;
    ReadSetting m_read;
    std::function<void()> m_show; // shows m_read
};

} // namespace tov::workbench
