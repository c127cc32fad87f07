// What every window of the program owes to whoever has no mouse, no eyes or a small screen.
#pragma once

#include "ui/content_area.h"
#include "ui/form.h"

#include <QAccessible>
#include <QLayout>
#include <QScrollBar>
#include <QSet>
#include <QTest>

#include <gtest/gtest.h>

namespace karvo::test
{

// What is left of 1366x768 at 150 % and of 800x600, the smaller of both: without frame and task bar.
inline constexpr QSize leastRoom(784, 424);

inline std::string nameOf(const QWidget& control)
{
    return control.metaObject()->className() + (" " + control.objectName().toStdString());
}

// Controls that take the keyboard; a control's own parts are left out.
inline std::vector<QWidget*> controlsOf(const QWidget& window)
{
    std::vector<QWidget*> controls;
    for (QWidget* const control : window.findChildren<QWidget*>()) {
        if (control->isVisibleTo(&window) && (control->focusPolicy() & Qt::TabFocus) != 0 &&
            control->focusProxy() == nullptr && !control->objectName().startsWith(QStringLiteral("qt_")))
            controls.push_back(control);
    }
    return controls;
}

inline void checkTab(QWidget& window)
{
    const auto controls = controlsOf(window);
    QSet<const QWidget*> reached;
    for (std::size_t press = 0; press <= controls.size(); ++press) {
        QTest::keyClick(window.focusWidget() != nullptr ? window.focusWidget() : &window, Qt::Key_Tab);
        reached.insert(window.focusWidget());
    }
    for (const QWidget* const control : controls)
        EXPECT_TRUE(!control->isEnabled() || reached.contains(control)) << "no Tab to " << nameOf(*control);
}

// Into every field and onto the buttons themselves.
inline void checkEnter(QWidget& window)
{
    int pressed = 0;
    const auto writing = window.findChildren<WriteButton*>();
    for (const WriteButton* const button : writing) {
        EXPECT_FALSE(button->isDefault() || button->autoDefault()) << nameOf(*button);
        QObject::connect(button, &QPushButton::clicked, [&] { ++pressed; });
    }
    for (QWidget* const control : controlsOf(window)) {
        if (writing.empty() || (qobject_cast<QAbstractButton*>(control) != nullptr &&
                                qobject_cast<WriteButton*>(control) == nullptr))
            continue;
        control->setFocus();
        QTest::keyClick(control, Qt::Key_Return);
        EXPECT_EQ(pressed, 0) << nameOf(*control);
        window.show(); // a default button that cancels may have closed it
    }
    for (const WriteButton* const button : writing)
        QObject::disconnect(button, &QPushButton::clicked, nullptr, nullptr);
}

inline void checkNames(const QWidget& window)
{
    EXPECT_FALSE(window.windowTitle().isEmpty());
    for (QWidget* const control : controlsOf(window)) {
        EXPECT_FALSE(control->objectName().isEmpty()) << nameOf(*control);
        EXPECT_FALSE(QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name).isEmpty())
            << nameOf(*control);
    }
}

// Whatever the room: the buttons are whole.
inline void checkRoom(QWidget& window)
{
    EXPECT_LE(window.width(), window.screen()->availableSize().width());
    EXPECT_EQ(window.findChild<ContentArea*>()->verticalScrollBar()->maximum(), 0) << "opens too low";
    window.resize(leastRoom);
    window.layout()->activate();
    EXPECT_EQ(window.size(), leastRoom) << "needs more";
    const auto* const row = window.findChild<ButtonRow*>();
    ASSERT_NE(row, nullptr);
    for (const QAbstractButton* const button : row->buttons()) {
        const QRect place(button->mapTo(&window, QPoint()), button->size());
        EXPECT_TRUE(window.rect().contains(place)) << nameOf(*button);
        EXPECT_GE(button->width(), button->minimumSizeHint().width()) << nameOf(*button);
    }
}

// Shows it, and hides it again.
inline void checkWindow(Form& window)
{
    SCOPED_TRACE(window.objectName().toStdString() + ": " + window.windowTitle().toStdString());
    window.show();
    checkNames(window);
    checkTab(window);
    checkEnter(window);
    checkRoom(window);
    window.hide();
}

} // namespace karvo::test
