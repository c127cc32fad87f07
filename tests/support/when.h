// Something to be done in the middle of an operation, from the event loop of its wait.
#pragma once

#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <utility>

namespace karvo::test
{

// Acts once, as soon as the condition holds; it must come to that.
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
    When(const When&) = delete;
    When& operator=(const When&) = delete;

    bool hasActed() const { return acted_; }

private:
    QTimer timer_;
    bool acted_ = false;
};

} // namespace karvo::test
