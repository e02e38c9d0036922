#include "workbench/panels/numberbox.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace tov::workbench {

namespace {

constexpr double farthest = 1e18; // a spin box rounds at what it shows, and digits do not reach farther

} // namespace

NumberBox::NumberBox(QWidget* parent)
    : QDoubleSpinBox(parent)
    , m_least(-farthest)
    , m_most(farthest)
{
    setDecimals(9); // which are shown only where they are not 0
    setStepType(AdaptiveDecimalStepType);
    setAlignment(Qt::AlignRight);
    setFocusPolicy(Qt::StrongFocus); // not by the wheel, which scrolls
    setKeyboardTracking(false);
    setLimits(m_least, m_most);
    connect(this, &QDoubleSpinBox::editingFinished, this, [this] {
        lineEdit()->setModified(false);
        Q_EMIT edited();
    });
}

void NumberBox::setWhole()
{
    m_isWhole = true;
    setDecimals(0);
    setStepType(DefaultStepType);
    setSingleStep(1);
}

void NumberBox::setLimits(double least, double most)
{
    m_least = std::max(least, -farthest);
    m_most = std::min(most, farthest);
    if (specialValueText().isEmpty())
        setRange(m_least, m_most);
}

void NumberBox::showNumber(const std::optional<double>& number)
{
    // Spin boxes show a special text at their least value, which therefore lies below what is taken.
    setSpecialValueText(number ? QString() : tr("none"));
    setRange(number ? m_least : std::nextafter(m_least, -farthest) - 1, m_most);
    setValue(number.value_or(minimum()));
    m_exact = number.value_or(minimum());
    m_shown = value();
}

std::optional<double> NumberBox::number() const
{
    if (!specialValueText().isEmpty() && value() == minimum())
        return {};
    return value() == m_shown ? m_exact : value();
}

bool NumberBox::isBeingEdited() const
{
    return lineEdit()->isModified() && hasFocus();
}

QString NumberBox::textFromValue(double value) const
{
    return locale().toString(value, 'f', QLocale::FloatingPointShortest);
}

double NumberBox::valueFromText(const QString& text) const
{
    return locale().toDouble(text.trimmed());
}

QValidator::State NumberBox::validate(QString& text, int& /*position*/) const
{
    if (!specialValueText().isEmpty() && text == specialValueText())
        return QValidator::Acceptable;
    bool isNumber = false;
    const double number = locale().toDouble(text.trimmed(), &isNumber);
    if (!isNumber)
        return QValidator::Intermediate;
    if (m_isWhole && number != std::trunc(number))
        return QValidator::Invalid;
    return number >= m_least && number <= m_most ? QValidator::Acceptable : QValidator::Intermediate;
}

QSize NumberBox::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 22, QDoubleSpinBox::sizeHint().height()};
}

// A line edit takes the keys of undo for itself, also where it has nothing to undo.
bool NumberBox::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && !lineEdit()->isModified())
        if (const auto* const keys = dynamic_cast<QKeyEvent*>(event);
            keys != nullptr && (keys->matches(QKeySequence::Undo) || keys->matches(QKeySequence::Redo))) {
            event->ignore();
            return true;
        }
    return QDoubleSpinBox::event(event);
}

void NumberBox::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QDoubleSpinBox::wheelEvent(event);
    else
        event->ignore();
}

} // namespace tov::workbench
