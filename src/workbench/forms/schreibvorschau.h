// What a write from the list will write, before anything is sent.
#pragma once

#include "workbench/write_preview.h"

#include <QDialog>

class QCheckBox;
class QDialogButtonBox;
class QLabel;
class QPushButton;
class QTableWidget;

namespace karvo
{

class Schreibvorschau : public QDialog
{
    Q_OBJECT

public:
    // The ticks of `preview` follow the person's.
    Schreibvorschau(WritePreview& preview, const ProgramState& state, QWidget* parent);

    // What was answered, once the window has closed.
    PreviewAnswer answer() const;

private:
    void build(const ProgramState& state);
    void addNotes(QLayout* layout, const ProgramState& state);
    void fillTable();
    QDialogButtonBox* buttons();
    QLabel* addLabel(const char* name, const QString& text);
    void takeTick(int row);
    void leaveVehiclesOwn(bool left);
    void showTicks();
    void showCounts();

    WritePreview& preview_;
    const LanguageTables& texts_;
    QTableWidget* table_;
    QLabel* counts_;
    QCheckBox* vehiclesOwn_; // only where the list's differ from the vehicle's
    QCheckBox* askNoMore_;
    QPushButton* write_ = nullptr;
};

} // namespace karvo
