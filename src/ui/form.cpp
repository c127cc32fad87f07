#include "ui/form.h"

#include "ui/captions.h"
#include "ui/content_area.h"
#include "ui/parting.h"
#include "ui/tab_order.h"
#include "ui/usual_size.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScopedValueRollback>
#include <QStyle>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

// What scrolls by itself shrinks before the column as a whole scrolls.
class Column : public QWidget
{
public:
    int heightForWidth(int width) const override { return layout()->minimumHeightForWidth(width); }
};

} // namespace

Form::Form(const LanguageTables& texts, const char* name, Caption title, QWidget* parent)
    : Form(texts, name, qtText(texts.caption(title)), parent)
{
}

Form::Form(const LanguageTables& texts, const char* name, const QString& title, QWidget* parent)
    : QDialog(parent),
      texts_(texts),
      outer_(new QVBoxLayout(this)),
      column_(new QVBoxLayout),
      area_(nullptr),
      buttons_(new ButtonRow(this))
{
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(title);
    auto* const content = new Column;
    content->setLayout(column_);
    column_->setContentsMargins(0, 0, 0, 0);
    area_ = new ContentArea(content, this);
    outer_->addWidget(area_, 1);
    outer_->addWidget(buttons_);
    buttons_->hide(); // until there is one
    connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

Form::~Form()
{
    partFromControls(*this);
    hide(); // while it still is one
}

QPushButton* Form::addButton(const char* name, Caption caption, ButtonRow::ButtonRole role)
{
    buttons_->show();
    return buttons_->add(name, onButton(caption), role);
}

QPushButton* Form::addWriting(const char* name, Caption caption, ButtonRow::ButtonRole role)
{
    buttons_->show();
    return buttons_->addWriting(name, onButton(caption), role);
}

QMenu& Form::addMenu(Caption caption)
{
    if (menus_ == nullptr) {
        menus_ = new QMenuBar(this);
        menus_->setNativeMenuBar(false);
        outer_->setMenuBar(menus_);
    }
    return *menus_->addMenu(onButton(caption));
}

QAction* Form::addItem(QMenu& menu, const char* name, Caption caption, std::function<void()> act)
{
    QAction* const item = menu.addAction(onButton(caption));
    item->setObjectName(QString::fromLatin1(name));
    item->setMenuRole(QAction::NoRole);
    connect(item, &QAction::triggered, this, std::move(act));
    return item;
}

void Form::whenEntered(QLineEdit& field, std::function<void()> act)
{
    connect(&field, &QLineEdit::textEdited, this, [this, &field] { refused_.remove(&field); });
    connect(&field, &QLineEdit::editingFinished, this, [this, &field, act = std::move(act)] {
        const bool isTold = refused_.contains(&field) && refused_.value(&field) == field.text();
        if (!closing_ && !refusing_ && !isTold)
            act();
    });
}

void Form::refuse(QLineEdit& field, const Text& why, Prompts& prompts)
{
    if (refusing_)
        return;
    refused_.insert(&field, field.text());
    {
        const QScopedValueRollback telling(refusing_, true);
        prompts.message(why, PromptIcon::warning);
    }
    field.setFocus();
    field.selectAll();
}

QString Form::shown(Caption caption) const
{
    return qtText(texts_.caption(caption));
}

QString Form::onButton(Caption caption) const
{
    return buttonText(texts_.caption(caption));
}

void Form::setVisible(bool visible)
{
    if (visible && !isVisible()) {
        closing_ = false;
        for (QPushButton* const button : findChildren<QPushButton*>())
            button->setAutoDefault(false);
        area_->guardFromWheel();
        if (!testAttribute(Qt::WA_Resized))
            openInUsualSize();
    }
    QDialog::setVisible(visible);
}

void Form::openInUsualSize()
{
    ensurePolished();
    const QSize room = roomOnScreen(*this);
    QSize wanted = usual_.isValid() ? usual_ : sizeHint();
    if (wanted.height() > room.height()) // a scroll bar takes from the width
        wanted.rwidth() += style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    resizeToUsual(*this, wanted);
}

void Form::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous())
        keepOnScreen(*this);
}

void Form::reject()
{
    const QScopedValueRollback closing(closing_, true);
    if (mayClose())
        QDialog::reject();
}

void Form::done(int result)
{
    closing_ = true;
    QDialog::done(result);
}

void Form::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    auto* const button = qobject_cast<QPushButton*>(focusWidget());
    if (isEnter && button != nullptr)
        button->click();
    else
        QDialog::keyPressEvent(event);
}

bool Form::focusNextPrevChild(bool next)
{
    return focusNextInOrder(*this, next);
}

} // namespace karvo
