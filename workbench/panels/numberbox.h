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

    /// What is shown, to the last digit, though a box shows no more than nine behind the point.
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
    bool event(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    double m_least;
    double m_most;
    bool m_isWhole = false;
    double m_exact = 0.0; // what was to be shown
    double m_shown = 0.0; // the value that showed it
};

} // namespace tov::workbench
