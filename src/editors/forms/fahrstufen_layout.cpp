// The controls of the speed-step editor.
#include "cvdata/speed_cvs.h"
#include "editors/forms/fahrstufen.h"
#include "editors/forms/step_graph.h"
#include "ui/captions.h"
#include "ui/typed_text.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

namespace karvo
{

namespace
{

constexpr int columnsOfFields = 7;

} // namespace

void Fahrstufen::build()
{
    setWindowTitle(qtText(texts_.caption(Caption::stepsTitle)));
    graph_->setObjectName(QStringLiteral("p"));
    graph_->setAccessibleName(qtText(texts_.caption(Caption::stepGraph)));
    connect(graph_, &StepGraph::stepChosen, this, &Fahrstufen::chooseStep);
    connect(graph_, &StepGraph::valueWanted, this, &Fahrstufen::setStep);
    note_->setObjectName(QStringLiteral("Note"));
    note_->setTextFormat(Qt::PlainText);
    note_->setWordWrap(true);
    note_->setMinimumHeight(2 * fontMetrics().height()); // two lines, so that the window does not jump
    note_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* const column = new QVBoxLayout(this);
    column->setMenuBar(menus());
    column->addWidget(graph_, 1);
    column->addWidget(note_);
    column->addWidget(fieldGrid());
    column->addWidget(chosenStepRow());
    column->addWidget(buttons());
}

QMenuBar* Fahrstufen::menus()
{
    auto* const bar = new QMenuBar(this);
    bar->setNativeMenuBar(false);
    QMenu* const curves = bar->addMenu(buttonText(texts_.caption(Caption::generatorsMenu)));
    const auto asked = [this](Curve curve, CurveQuestions questions) {
        return [this, curve, questions] { compute(curve, questions, highest_); };
    };
    const int highestLinear = highestLinearSpeed(bench_.state.set.profile);
    addCurve(*curves, "mnu_standart", Caption::linearCurve,
             [this, highestLinear] { compute(Curve::linear, CurveQuestions::firstAndLast, highestLinear); });
    addCurve(*curves, "mnu_E_FS1", Caption::linearFirstStep, asked(Curve::linear, CurveQuestions::firstOnly));
    addCurve(*curves, "mnu_E_FS28", Caption::linearLastStep, asked(Curve::linear, CurveQuestions::lastOnly));
    addCurve(*curves, "mnu_E_FS1_28", Caption::twoPointCurve,
             asked(Curve::twoPoint, CurveQuestions::firstAndLast));
    addCurve(*curves, "mnu_E_FS_1_14_28", Caption::threePointCurve,
             asked(Curve::threePoint, CurveQuestions::firstMiddleAndLast));
    addCurve(*curves, "mnu_log", Caption::logarithmicCurve,
             asked(Curve::logarithmic, CurveQuestions::firstAndLast));
    addCurve(*curves, "mnu_expo", Caption::exponentialCurve,
             asked(Curve::exponential, CurveQuestions::firstAndLast));
    addCurve(*curves, "mnu_ueberhoeht", Caption::exaggeratedCurve, [this] { computeExaggerated(); });
    QMenu* const tables = bar->addMenu(buttonText(texts_.caption(Caption::tablesMenu)));
    addCurve(*tables, "mnu_tabelle", Caption::preTablesItem, [this] { openTables(); });
    return bar;
}

void Fahrstufen::addCurve(QMenu& menu, const char* name, Caption caption, std::function<void()> act)
{
    QAction* const item = menu.addAction(buttonText(texts_.caption(caption)));
    item->setObjectName(QString::fromLatin1(name));
    item->setMenuRole(QAction::NoRole);
    connect(item, &QAction::triggered, this, std::move(act));
    curves_.append(item);
}

QLineEdit* Fahrstufen::numberField(const QString& name)
{
    auto* const field = new QLineEdit(this);
    field->setObjectName(name);
    field->setValidator(new Windows1252Validator(field));
    field->setMaxLength(6);
    field->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000")));
    return field;
}

QWidget* Fahrstufen::fieldGrid()
{
    auto* const box = new QWidget(this);
    auto* const grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    for (int step = 1; step <= speedStepCount; ++step) {
        QLineEdit* const field = numberField(QStringLiteral("Text1_%1").arg(step - 1));
        auto* const label = new QLabel(QString::number(step), box);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        label->setBuddy(field);
        field->setAccessibleName(filledCaption(texts_, Caption::stepField, {textFromNumber(step)}));
        connect(field, &QLineEdit::editingFinished, this, [this, field, step] { takeField(*field, step); });
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
    const auto addLabelled = [&](Caption caption, QWidget* control) {
        auto* const label = new QLabel(buttonText(texts_.caption(caption)), box);
        label->setBuddy(control);
        control->setAccessibleName(label->text());
        row->addWidget(label);
        row->addWidget(control);
    };
    chosenStep_->setObjectName(QStringLiteral("Combo1"));
    for (int step = 1; step <= speedStepCount; ++step)
        chosenStep_->addItem(QString::number(step));
    addLabelled(Caption::chosenStep, chosenStep_);
    addLabelled(Caption::chosenStepValue, chosenValue_);
    row->addStretch(1);
    connect(chosenStep_, &QComboBox::activated, this, [this](int index) { chooseStep(index + 1); });
    connect(chosenValue_, &QLineEdit::editingFinished, this,
            [this] { takeField(*chosenValue_, chosenStep_->currentIndex() + 1); });
    return box;
}

QWidget* Fahrstufen::buttons()
{
    auto* const box = new QDialogButtonBox(this);
    const auto add = [&](const char* name, Caption caption, QDialogButtonBox::ButtonRole role) {
        auto* const button = box->addButton(buttonText(texts_.caption(caption)), role);
        button->setObjectName(QString::fromLatin1(name));
        button->setAutoDefault(false); // Enter ends the entry of a field
        return button;
    };
    takeOver_ = add("Uebernehmen", Caption::takeStepsOver, QDialogButtonBox::ApplyRole);
    reset_ = add("Zuruecksetzen", Caption::resetSteps, QDialogButtonBox::ResetRole);
    add("Abbrechen", Caption::cancelButton, QDialogButtonBox::RejectRole);
    connect(takeOver_, &QPushButton::clicked, this, &Fahrstufen::takeOver);
    connect(reset_, &QPushButton::clicked, this, &Fahrstufen::reset);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return box;
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
