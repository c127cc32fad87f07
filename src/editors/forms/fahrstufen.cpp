#include "editors/forms/fahrstufen.h"

#include "cvdata/speed_cvs.h"
#include "editors/forms/pre_fahrstufen.h"
#include "editors/forms/step_graph.h"
#include "ui/captions.h"
#include "ui/named.h"
#include "ui/typed_text.h"

#include <QComboBox>
#include <QShowEvent>

namespace karvo
{

namespace
{

SpeedTable startValues(const ProgramState& state)
{
    const bool isView = state.speedStepViews > 0 && state.lastRead;
    return isView ? speedTableOf(state.lastRead->image) : speedTableOf(state.set.table);
}

constexpr int highestOfF5Scale = 120;

} // namespace

Fahrstufen::Fahrstufen(Workbench& bench, QWidget* parent) : Fahrstufen(bench, "Fahrstufen", parent)
{
}

Fahrstufen::Fahrstufen(Workbench& bench, const char* name, QWidget* parent)
    : EditorDialog(bench.state.texts, name, Caption::stepsTitle, parent),
      bench_(bench),
      viewMode_(bench.state.speedStepViews > 0),
      highest_(highestSpeed(bench.state.set.profile)),
      edit_(startValues(bench.state)),
      graph_(named<StepGraph>("p", this, shown(Caption::stepGraph))),
      chosenStep_(named<QComboBox>("Combo1", this)),
      chosenValue_(numberField("Text2")),
      note_(textLabel("Note", this))
{
    build();
    if (viewMode_)
        useViewMode();
}

void Fahrstufen::showEvent(QShowEvent* event)
{
    EditorDialog::showEvent(event);
    if (!event->spontaneous())
        showValues();
}

void Fahrstufen::drawbargraph()
{
    drawUpTo(highest_);
}

void Fahrstufen::drawUpTo(int highest)
{
    graph_->show({edit_.shown(), edit_.taken(), lowestSpeed, highest});
}

// What a field is being edited is lost to a curve: it sets them all.
void Fahrstufen::compute(Curve curve, CurveQuestions questions, int highest)
{
    const auto points = askForCurve({questions, edit_.shown(), highest}, bench_.prompts, texts_);
    if (!points)
        return;
    edit_.fill(speedCurve(curve, *points));
    showValues();
}

void Fahrstufen::computeExaggerated()
{
    if (!bench_.prompts.question(texts_.message(Message::exaggerateQuestion)))
        return;
    edit_.fill(exaggeratedCurve(edit_.taken(), highest_));
    showValues();
}

void Fahrstufen::openTables()
{
    Pre_Fahrstufen tables(bench_, this);
    if (tables.exec() != QDialog::Accepted)
        return;
    edit_.fill(tables.table());
    showValues();
}

void Fahrstufen::showValues()
{
    for (int step = 1; step <= speedStepCount; ++step) {
        const auto at = static_cast<std::size_t>(step - 1);
        fields_[at]->setText(QString::number(edit_.shown()[at]));
    }
    chooseStep(graph_->chosenStep());
    drawbargraph();
    const auto& base = edit_.pendingBase();
    if (base)
        note_->setText(filledCaption(texts_, Caption::baseAndTopPending,
                                     {textFromNumber(base->base), textFromNumber(base->top)}));
    else
        note_->setText(shown(viewMode_ ? Caption::stepsViewOnly : Caption::stepGraphHint));
}

void Fahrstufen::chooseStep(int step)
{
    graph_->choose(step);
    chosenStep_->setCurrentIndex(step - 1);
    chosenValue_->setText(QString::number(edit_.shown()[static_cast<std::size_t>(step - 1)]));
}

void Fahrstufen::setStep(int step, int value)
{
    edit_.setStep(step, value);
    fields_[static_cast<std::size_t>(step - 1)]->setText(QString::number(value));
    if (chosenStep_->currentIndex() == step - 1)
        chosenValue_->setText(QString::number(value));
    drawbargraph();
}

bool Fahrstufen::showsStep(const QLineEdit& field, int step) const
{
    return numberFromText(typedText(field.text())) == edit_.shown()[static_cast<std::size_t>(step - 1)];
}

bool Fahrstufen::holdsWork() const
{
    if (viewMode_)
        return false;
    bool shown = showsStep(*chosenValue_, chosenStep_->currentIndex() + 1);
    for (int step = 1; step <= speedStepCount; ++step)
        shown = shown && showsStep(*fields_[static_cast<std::size_t>(step - 1)], step);
    return edit_.isChanged() || !shown;
}

// False for a value outside the limits, which is told once and can be mended. A value that stands in the
// table is left alone, whatever it is.
bool Fahrstufen::takeField(QLineEdit& field, int step)
{
    if (showsStep(field, step))
        return true;
    const auto typed = numberFromText(typedText(field.text()));
    if (typed && *typed >= lowestSpeed && *typed <= highest_) {
        setStep(step, *typed);
        return true;
    }
    refuse(field,
           texts_.message(Message::stepOutsideRange,
                          {textFromNumber(step), textFromNumber(lowestSpeed), textFromNumber(highest_)}),
           bench_.prompts);
    return false;
}

bool Fahrstufen::takeFields()
{
    for (int step = 1; step <= speedStepCount; ++step) {
        if (!takeField(*fields_[static_cast<std::size_t>(step - 1)], step))
            return false;
    }
    return takeField(*chosenValue_, chosenStep_->currentIndex() + 1);
}

void Fahrstufen::takeOver()
{
    if (!takeFields())
        return;
    const Text taken = texts_.caption(Caption::stepsTaken, {textFromNumber(edit_.Uebernehmen(bench_))});
    bench_.view.showStatus(taken);
    showValues();
    note_->setText(qtText(taken));
}

void Fahrstufen::reset()
{
    edit_.reset();
    showValues();
}

FahrstufenF5::FahrstufenF5(Workbench& bench, QWidget* parent) : Fahrstufen(bench, "FahrstufenF5", parent)
{
}

void FahrstufenF5::drawbargraphF5()
{
    drawUpTo(highestOfF5Scale);
}

} // namespace karvo
