// What a write from the list will write, before anything is sent.
#pragma once

#include "ui/form.h"
#include "workbench/write_preview.h"

class QCheckBox;
class QLabel;
class QTableWidget;

namespace karvo
{

class Schreibvorschau : public Form
{
    Q_OBJECT

public:
    // The ticks of `preview` follow the person's.
    Schreibvorschau(WritePreview& preview, const ProgramState& state, QWidget* parent);

    // What was answered, once the window has closed.
    PreviewAnswer answer() const;

private:
    void build(const ProgramState& state);
    void addNotes(const ProgramState& state);
    void fillTable();
    void addButtons();
    void takeTick(int row);
    void leaveVehiclesOwn(bool left);
    void showTicks();
    void showCounts();

    WritePreview& preview_;
    QTableWidget* table_;
    QLabel* counts_;
    QCheckBox* vehiclesOwn_; // only where the list's differ from the vehicle's
    QCheckBox* askNoMore_;
    QPushButton* write_ = nullptr;
};

} // namespace karvo
