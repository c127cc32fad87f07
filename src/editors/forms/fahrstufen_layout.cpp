// The controls of the speed-step editor.
#include "cvdata/speed_cvs.h"
#include "editors/forms/fahrstufen.h"
#include "editors/forms/step_graph.h"
#include "ui/captions.h"
#include "ui/named.h"

#include <QComboBox>
#include <QGridLayout>
#include <QMenu>

namespace karvo
{

namespace
{

constexpr int columnsOfFields = 7;
constexpr int mostDigits = 6; // more than a step has, so that a wrong number can be seen as such

} // namespace

void Fahrstufen::build()
{
    graph_->speakWith([this](int step, int value) {
        return filledCaption(texts_, Caption::stepGraphValue, {textFromNumber(step), textFromNumber(value)});
    });
    connect(graph_, &StepGraph::stepChosen, this, &Fahrstufen::chooseStep);
    connect(graph_, &StepGraph::valueWanted, this, &Fahrstufen::setStep);
    note_->setMinimumHeight(2 * fontMetrics().height()); // two lines, so that the window does not jump
    addMenus();
    column().addWidget(graph_, 1);
    column().addWidget(note_);
    column().addWidget(fieldGrid());
    column().addWidget(chosenStepRow());
    addButtons();
}

void Fahrstufen::addMenus()
{
    QMenu& curves = addMenu(Caption::generatorsMenu);
    const auto asked = [this](Curve curve, CurveQuestions questions) {
        return [this, curve, questions] { compute(curve, questions, highest_); };
    };
    const int highestLinear = highestLinearSpeed(bench_.state.set.profile);
    addCurve(curves, "mnu_standart", Caption::linearCurve,
             [this, highestLinear] { compute(Curve::linear, CurveQuestions::firstAndLast, highestLinear); });
    addCurve(curves, "mnu_E_FS1", Caption::linearFirstStep, asked(Curve::linear, CurveQuestions::firstOnly));
    addCurve(curves, "mnu_E_FS28", Caption::linearLastStep, asked(Curve::linear, CurveQuestions::lastOnly));
    addCurve(curves, "mnu_E_FS1_28", Caption::twoPointCurve,
             asked(Curve::twoPoint, CurveQuestions::firstAndLast));
    addCurve(curves, "mnu_E_FS_1_14_28", Caption::threePointCurve,
             asked(Curve::threePoint, CurveQuestions::firstMiddleAndLast));
    addCurve(curves, "mnu_log", Caption::logarithmicCurve,
             asked(Curve::logarithmic, CurveQuestions::firstAndLast));
    addCurve(curves, "mnu_expo", Caption::exponentialCurve,
             asked(Curve::exponential, CurveQuestions::firstAndLast));
    addCurve(curves, "mnu_ueberhoeht", Caption::exaggeratedCurve, [this] { computeExaggerated(); });
    addCurve(addMenu(Caption::tablesMenu), "mnu_tabelle", Caption::preTablesItem, [this] { openTables(); });
}

void Fahrstufen::addCurve(QMenu& menu, const char* name, Caption caption, std::function<void()> act)
{
    curves_.append(addItem(menu, name, caption, std::move(act)));
}

QLineEdit* Fahrstufen::numberField(const char* name)
{
    auto* const field = entryField(name, this, mostDigits);
    field->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000")));
    return field;
}

QWidget* Fahrstufen::fieldGrid()
{
    auto* const box = new QWidget(this);
    auto* const grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    for (int step = 1; step <= speedStepCount; ++step) {
        const std::string name = "Text1_" + std::to_string(step - 1);
        QLineEdit* const field = numberField(name.c_str());
        auto* const label = labelFor(*field, QString::number(step));
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        field->setAccessibleName(filledCaption(texts_, Caption::stepField, {textFromNumber(step)}));
        whenEntered(*field, [this, field, step] { takeField(*field, step); });
        const int row = (step - 1) / columnsOfFields;
        const int place = (step - 1) % columnsOfFields;
        grid->addWidget(label, row, 2 * place);
        grid->addWidget(field, row, 2 * place + 1);
        fields_[static_cast<std::size_t>(step - 1)] = field;
    }
    return box;
}

QWidget* Fahrstufen::chosenStepRow()
{
    auto* const box = new QWidget(this);
    auto* const row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    for (int step = 1; step <= speedStepCount; ++step)
        chosenStep_->addItem(QString::number(step));
    row->addWidget(labelFor(*chosenStep_, shown(Caption::chosenStep)));
    row->addWidget(chosenStep_);
    row->addWidget(labelFor(*chosenValue_, shown(Caption::chosenStepValue)));
    row->addWidget(chosenValue_);
    row->addStretch(1);
    connect(chosenStep_, &QComboBox::activated, this, [this](int index) { chooseStep(index + 1); });
    whenEntered(*chosenValue_, [this] { takeField(*chosenValue_, chosenStep_->currentIndex() + 1); });
    return box;
}

void Fahrstufen::addButtons()
{
    takeOver_ = addButton("Uebernehmen", Caption::takeStepsOver, ButtonRow::ApplyRole);
    reset_ = addButton("Zuruecksetzen", Caption::resetSteps, ButtonRow::ResetRole);
    addButton("Abbrechen", Caption::cancelButton, ButtonRow::RejectRole);
    connect(takeOver_, &QPushButton::clicked, this, &Fahrstufen::takeOver);
    connect(reset_, &QPushButton::clicked, this, &Fahrstufen::reset);
}

void Fahrstufen::useViewMode()
{
    graph_->setReadOnly(true);
    for (QLineEdit* const field : fields_)
        field->setReadOnly(true);
    chosenValue_->setReadOnly(true);
    takeOver_->setEnabled(false);
    reset_->setEnabled(false);
    for (QAction* const item : curves_)
        item->setEnabled(false);
}

} // namespace karvo
