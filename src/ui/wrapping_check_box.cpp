#include "ui/wrapping_check_box.h"

#include <QStyleOptionButton>
#include <QStylePainter>

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int textFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextShowMnemonic;
constexpr int narrowestText = 18; // characters of average width
constexpr int preferredText = 40;

} // namespace

WrappingCheckBox::WrappingCheckBox(QWidget* parent) : QCheckBox(parent)
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum, QSizePolicy::CheckBox);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize WrappingCheckBox::sizeHint() const
{
    const int width = indicatorWidth() + preferredText * fontMetrics().averageCharWidth();
    return {width, heightForWidth(width)};
}

QSize WrappingCheckBox::minimumSizeHint() const
{
    return {indicatorWidth() + narrowestText * fontMetrics().averageCharWidth(), lineHeight()};
}

int WrappingCheckBox::heightForWidth(int width) const
{
    const QRect space(0, 0, std::max(1, width - indicatorWidth()), QWIDGETSIZE_MAX);
    const QRect text = style()->itemTextRect(fontMetrics(), space, textFlags, isEnabled(), this->text());
    return std::max(lineHeight(), text.height());
}

void WrappingCheckBox::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter(this);
    QStyleOptionButton box = firstLine();
    box.rect = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &box, this);
    painter.drawPrimitive(QStyle::PE_IndicatorCheckBox, box);

    const QStyleOptionButton line = firstLine();
    const QRect contents = style()->subElementRect(QStyle::SE_CheckBoxContents, &line, this);
    const int top = std::max(0, (lineHeight() - fontMetrics().height()) / 2);
    const QRect place(contents.x(), top, width() - indicatorWidth(), height() - top);
    painter.drawItemText(place, textFlags, palette(), isEnabled(), text(), foregroundRole());
    if (!hasFocus())
        return;
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    focus.rect = place;
    focus.backgroundColor = palette().color(backgroundRole());
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
}

int WrappingCheckBox::indicatorWidth() const
{
    return style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this) +
           style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, this) + 2;
}

int WrappingCheckBox::lineHeight() const
{
    return std::max(fontMetrics().height(), style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this)) +
           2;
}

QStyleOptionButton WrappingCheckBox::firstLine() const
{
    QStyleOptionButton option;
    initStyleOption(&option);
    option.rect = QRect(0, 0, width(), lineHeight());
    return option;
}

} // namespace karvo
