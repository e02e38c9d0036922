#pragma once

#include <QDoubleSpinBox>

#include <optional>

namespace tov::workbench {

/// Edits a number, which is shown with as few digits as say it, in the user's language, or as "none".
class NumberBox final : public QDoubleSpinBox
{
    Q_OBJECT

public:
    explicit NumberBox(QWidget* parent = nullptr);

    /// Takes whole numbers only.
    void setWhole();

    /// Takes the numbers between these two.
    void setLimits(double least, double most);

    /// Shows a number, or that there is none.
    void showNumber(const std::optional<double>& number);

    /// What is shown.
    std::optional<double> number() const;

    /// Whether the user is in the middle of it.
    bool isBeingEdited() const;

    QString textFromValue(double value) const override;
    double valueFromText(const QString& text) const override;
    QValidator::State validate(QString& text, int& position) const override;
    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user has finished: by the Enter key or by going elsewhere.
    void edited();

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    double m_least;
    double m_most;
    bool m_isWhole = false;
};

} // namespace tov::workbench
