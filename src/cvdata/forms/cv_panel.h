// All that is shown of the current CV beside the list.
#pragma once

#include "cvdata/cv_details.h"
#include "language/language_tables.h"

#include <QWidget>

class QGroupBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace karvo
{

class BitBoxes;

class CvPanel : public QWidget
{
    Q_OBJECT

public:
    explicit CvPanel(QWidget* parent = nullptr);

    void applyCaptions(const LanguageTables& texts);
    // `expert` is what experts know of the CV; empty without expert mode.
    void showCv(const CvDetails& details, const Text& expert, const LanguageTables& texts);

signals:
    // Enter was pressed in the number's field; 0 for an empty field.
    void numberEntered(int number);

private:
    QLabel* addLabel(const char* name);
    QLineEdit* addField(const char* name);
    QLabel* addText(const char* name);
    QPushButton* addButton(const char* name);
    QGridLayout* fieldsLayout();
    void enterNumber();

    QGroupBox* group_;
    QLabel* numberLabel_;
    QLineEdit* number_;
    QLabel* valueLabel_;
    QLineEdit* value_;
    QPushButton* takeValue_;
    QLabel* factoryLabel_;
    QLineEdit* factory_;
    QLabel* limitsLabel_;
    QLabel* limits_;
    QLabel* name_;
    BitBoxes* bits_;
    QLabel* explanation_;
    QLabel* values_;
    QLabel* advice_;
    QLabel* expert_;
    QPushButton* writeSingle_;
    QPushButton* writeChanged_;
};

} // namespace karvo
