#include "ui/message_box.h"

#include "ui/captions.h"
#include "ui/named.h"
#include "ui/usual_size.h"

#include <QCoreApplication>
#include <QLayout>
#include <QMetaEnum>
#include <QScrollArea>
#include <QStyle>

#include <algorithm>

namespace karvo
{

MessageBox::MessageBox(Icon icon, const QString& title, const Text& text, StandardButtons buttons,
                       QWidget* owner)
    : QMessageBox(icon, title, qtText(text), buttons, owner)
{
    setTextFormat(Qt::PlainText);
}

// The toolkit bounds the width alone, and cuts off what is wider.
void MessageBox::showEvent(QShowEvent* event)
{
    QMessageBox::showEvent(event);
    auto* const text = findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    layout()->activate();
    const bool isCut = text->width() < text->minimumSizeHint().width();
    if (isCut || size().boundedTo(roomOnScreen(*this)) != size())
        scrollText(*text);
}

void MessageBox::scrollText(QLabel& text)
{
    const QSize around = size() - text.size();
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    auto* const area = named<QScrollArea>("TextArea", this, windowTitle());
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setMinimumSize((text.size() + QSize(bar, bar)).boundedTo(roomOnScreen(*this) - around));
    delete layout()->replaceWidget(&text, area);
    area->setWidget(&text);
    setText(this->text()); // so that the box is measured again
    adjustPosition(parentWidget());
}

void nameBoxButton(QMessageBox& box, QMessageBox::StandardButton button, const LanguageTables& texts,
                   Caption caption)
{
    QAbstractButton& shown = *box.button(button);
    shown.setObjectName(
        QString::fromLatin1(QMetaEnum::fromType<QMessageBox::StandardButtons>().valueToKey(button)));
    const Text text = texts.caption(caption);
    if (!text.empty())
        shown.setText(buttonText(text));
}

QString boxTitle(const LanguageTables& texts, Caption caption)
{
    const Text text = texts.caption(caption);
    return text.empty() ? QCoreApplication::applicationName() : qtText(text);
}

} // namespace karvo
