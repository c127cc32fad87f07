#include "firmware/forms/stop_question.h"

#include "ui/captions.h"
#include "ui/question_box.h"

namespace karvo
{

StopQuestion::StopQuestion(ProgramState& state, QObject* parent) : QObject(parent), state_(state)
{
}

StopQuestion::~StopQuestion()
{
    withdraw();
}

void StopQuestion::ask(QWidget* owner)
{
    ask(owner, usualQuestion());
}

void StopQuestion::ask(QWidget* owner, const Text& question)
{
    if (box_ || state_.stopRequested)
        return;
    box_ = new QuestionBox(state_.texts, question, owner);
    box_->setObjectName(QStringLiteral("StopQuestion"));
    box_->setAttribute(Qt::WA_DeleteOnClose);
    connect(box_, &QDialog::finished, this, [this](int answer) {
        if (answer != QMessageBox::Yes)
            return;
        state_.stopRequested = true;
        emit agreed();
    });
    box_->open();
}

void StopQuestion::renew()
{
    if (box_)
        box_->setText(qtText(usualQuestion()));
}

Text StopQuestion::usualQuestion() const
{
    return state_.texts.message(state_.firmwareAtRisk ? Message::stopTransferQuestion
                                                      : Message::stopUntouchedQuestion);
}

void StopQuestion::withdraw()
{
    delete box_;
}

} // namespace karvo
