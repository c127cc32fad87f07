// The question whether a transfer of firmware is to be stopped.
#pragma once

#include "workbench/workbench.h"

#include <QPointer>
#include <QWidget>

class QMessageBox;

namespace karvo
{

// The transfer goes on while the question stands open: a decoder that had to wait for the answer might give
// up.
class StopQuestion : public QObject
{
    Q_OBJECT

public:
    explicit StopQuestion(ProgramState& state, QObject* parent = nullptr);
    ~StopQuestion() override;

    // Once at a time, and not again once it has been agreed to. A Yes sets ProgramState::stopRequested.
    void ask(QWidget* owner);
    void ask(QWidget* owner, const Text& question);

    // The transfer begins to change the decoder: an open question that says otherwise speaks of that.
    void renew();

    // The transfer has ended: there is nothing left to ask.
    void withdraw();

signals:
    void agreed();

private:
    Text usualQuestion() const;

    ProgramState& state_;
    QPointer<QMessageBox> box_;
};

} // namespace karvo
