// The editor of the speed table: 28 fields and bars, the curves that fill them, and the take-over into the
// list.
#pragma once

#include "cvdata/speed_cvs.h"
#include "editors/curve_questions.h"
#include "editors/step_edit.h"
#include "ui/editor_dialog.h"
#include "workbench/workbench.h"

#include <array>
#include <functional>

class QComboBox;
class QLabel;

namespace karvo
{

class StepGraph;

class Fahrstufen : public EditorDialog
{
    Q_OBJECT

public:
    // The set on the bench has a speed table, and the line is free.
    explicit Fahrstufen(Workbench& bench, QWidget* parent = nullptr);

protected:
    Fahrstufen(Workbench& bench, const char* name, QWidget* parent);

    void showEvent(QShowEvent* event) override;

    // A curve that was not taken over, or a number in a field that is not in it yet.
    bool holdsWork() const override;

    // The table as bars, on the scale of this window.
    virtual void drawbargraph();
    void drawUpTo(int highest);

private:
    // fahrstufen_layout.cpp
    void build();
    void addMenus();
    void addCurve(QMenu& menu, const char* name, Caption caption, std::function<void()> act);
    QWidget* fieldGrid();
    QWidget* chosenStepRow();
    QLineEdit* numberField(const char* name);
    void addButtons();
    void useViewMode();

    void compute(Curve curve, CurveQuestions questions, int highest);
    void computeExaggerated();
    void openTables();

    void showValues();
    void chooseStep(int step);
    void setStep(int step, int value);
    bool showsStep(const QLineEdit& field, int step) const;
    bool takeField(QLineEdit& field, int step);
    bool takeFields();
    void takeOver();
    void reset();

    Workbench& bench_;
    const bool viewMode_; // the values are those of the last reply, and only shown
    const int highest_;
    StepEdit edit_;
    StepGraph* graph_;
    std::array<QLineEdit*, speedStepCount> fields_{};
    QComboBox* chosenStep_;
    QLineEdit* chosenValue_;
    QLabel* note_;
    QPushButton* takeOver_ = nullptr;
    QPushButton* reset_ = nullptr;
    QList<QAction*> curves_;
};

// The same for the generation F5: lower limits, and a scale of its own.
class FahrstufenF5 : public Fahrstufen
{
    Q_OBJECT

public:
    explicit FahrstufenF5(Workbench& bench, QWidget* parent = nullptr);

protected:
    void drawbargraph() override { drawbargraphF5(); }
    void drawbargraphF5();
};

} // namespace karvo
