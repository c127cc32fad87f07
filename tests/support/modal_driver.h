// Answers the modal windows of a test by a script, in order. A window that nobody expects, one that says
// something else, and an expected one that never comes fail the test; none is left open.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <utility>

namespace karvo::test
{

class ModalDriver
{
    using Action = std::function<void(QWidget&)>;

public:
    ModalDriver()
    {
        // A test before this one may have ended the program; no event loop starts until the main one has run
        // again.
        QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
        QCoreApplication::exec();
        QObject::connect(&timer_, &QTimer::timeout, [this] { look(); });
        timer_.start(5);
    }
    ~ModalDriver()
    {
        for (const Step& step : steps_)
            ADD_FAILURE() << "never came: " << step.what.toStdString();
    }

    // A box with this text, answered by the button with this caption.
    void expectBox(const QString& text, const QString& button)
    {
        expect(text, [text, button](QWidget& window) {
            auto* const box = qobject_cast<QMessageBox*>(&window);
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->text().toStdString(), text.toStdString());
            for (QAbstractButton* const candidate : box->buttons()) {
                if (candidate->text() == button)
                    return candidate->click();
            }
            ADD_FAILURE() << "no button " << button.toStdString();
        });
    }

    // An input under this title; nothing typed cancels it.
    void expectInput(const QString& title, const std::optional<QString>& typed)
    {
        expect(title, [title, typed](QWidget& window) {
            auto* const dialog = qobject_cast<QInputDialog*>(&window);
            ASSERT_TRUE(dialog);
            EXPECT_EQ(dialog->windowTitle().toStdString(), title.toStdString());
            dialog->setTextValue(typed.value_or(QString()));
            dialog->done(typed ? QDialog::Accepted : QDialog::Rejected);
        });
    }

    // Any window; `act` has to close it.
    void expect(const QString& what, Action act) { steps_.push_back({what, std::move(act), false}); }

    // A window that may stay open for a while after `act`: it has something under way.
    void expectLasting(const QString& what, Action act) { steps_.push_back({what, std::move(act), true}); }

    // Windows of this object name open and close by themselves.
    void leaveAlone(const char* name) { leftAlone_.append(QString::fromLatin1(name)); }

    bool isDone() const { return steps_.empty(); }

private:
    struct Step {
        QString what;
        Action act;
        bool lasts;
    };

    void look()
    {
        QWidget* const window = QApplication::activeModalWidget();
        if (window == nullptr || !window->isVisible() || window == answering_ ||
            leftAlone_.contains(window->objectName()))
            return;
        if (steps_.empty()) {
            const auto* const box = qobject_cast<QMessageBox*>(window);
            ADD_FAILURE() << "unexpected window: "
                          << (box != nullptr ? box->text() : window->windowTitle()).toStdString();
            window->close();
            return;
        }
        QWidget* const outer = std::exchange(answering_, QPointer<QWidget>(window));
        const Step step = std::move(steps_.front());
        steps_.pop_front();
        // Outside the timer's own slot, so that it goes on ticking over a box that the answer brings up.
        QTimer::singleShot(0, &timer_, [this, step, outer, window = QPointer<QWidget>(window)] {
            answer(step, window, outer);
        });
    }

    // `outer`: the window whose own answer has brought this one up, and is not yet done.
    void answer(const Step& step, const QPointer<QWidget>& window, QWidget* outer)
    {
        step.act(*window);
        if (step.lasts)
            return;
        answering_ = outer;
        if (window && window->isVisible()) {
            ADD_FAILURE() << "not closed: " << step.what.toStdString();
            window->close();
        }
    }

    QTimer timer_;
    std::deque<Step> steps_;
    QStringList leftAlone_;
    QPointer<QWidget> answering_; // its own further boxes are other windows
};

// Acts once in the middle of an operation, from the event loop of its wait, as soon as the condition holds;
// it must come to that.
class When
{
public:
    When(std::function<bool()> condition, std::function<void()> act)
    {
        QObject::connect(&timer_, &QTimer::timeout,
                         [this, condition = std::move(condition), act = std::move(act)] {
                             if (acted_ || !condition())
                                 return;
                             acted_ = true;
                             timer_.stop();
                             act();
                         });
        timer_.start(2);
    }
    ~When() { EXPECT_TRUE(acted_) << "it never came to that"; }

    bool hasActed() const { return acted_; }

private:
    QTimer timer_;
    bool acted_ = false;
};

} // namespace karvo::test
