// The two DCC addresses of the vehicle: entered, checked, and shown as CVs before they are written.
#pragma once

#include "editors/dcc_addresses.h"
#include "program/prompts.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace karvo
{

struct LanguageTables;

class DCC_Adresse : public QDialog
{
    Q_OBJECT

public:
    DCC_Adresse(const CvTable& table, Prompts& prompts, const LanguageTables& texts,
                QWidget* parent = nullptr);

    // What is to be written, once the dialog was accepted.
    const WritePlan& plan() const { return plan_; }

private:
    void build();
    QLabel* label(Caption caption);
    QCheckBox* checkBox(const char* name, Caption caption, bool checked);
    QWidget* buttons();
    void showAddresses();
    void showPlan();
    TypedAddresses typed() const;
    void write();

    const CvTable& table_;
    Prompts& prompts_;
    const LanguageTables& texts_;
    WritePlan plan_;
    QRadioButton* shortForm_;
    QRadioButton* longForm_;
    QLineEdit* first_;
    QLineEdit* second_;
    QCheckBox* writeFirst_;
    QCheckBox* writeSecond_;
    QCheckBox* secondAnswers_;
    QLabel* planned_;
};

} // namespace karvo
