#pragma once

#include "workbench/panels/page.h"

#include <QString>

#include <cstddef>
#include <vector>

class QCheckBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace tov::workbench {

/// The instrument's memory as a whole: copied into a file, replaced by one, erased, checked. How far that has come the
/// instrument tells.
class MemoryPage final : public Page
{
    Q_OBJECT

public:
    explicit MemoryPage(Panel& panel);

    /// There is nothing to read but the memory itself, which takes long.
    void refresh() override {}

private:
    void addButtons(QVBoxLayout& layout);
    void showProgress(const Notification& told);
    void dump(const QString& path);
    void look(const QString& path);
    void load(const std::vector<std::byte>& contents);
    void erase();
    void check();
    void showResult(const QString& text);

    template <typename Function, typename Answered>
    void carryOut(const QString& what, Function function, Answered answered);

    QCheckBox* m_fills = nullptr;
    QProgressBar* m_progress;
    QLabel* m_result;
    QWidget* m_buttons = nullptr;
};

} // namespace tov::workbench
