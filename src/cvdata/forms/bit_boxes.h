// The eight bits of a CV's value as check boxes, and the value that they make.
#pragma once

#include "cvdata/cv_details.h"
#include "language/language_tables.h"

#include <QGroupBox>

#include <array>

class QLabel;

namespace karvo
{

class WrappingCheckBox;

// Check128 down to Check1, and Errechneter_Wert.
class BitBoxes : public QGroupBox
{
    Q_OBJECT

public:
    explicit BitBoxes(QWidget* parent);

    void applyCaptions(const LanguageTables& texts);

    // Ticks the boxes as the value has its bits (none for a CV without a value), and names what they switch.
    // Boxes of bits that mean nothing are disabled and say so.
    void showCv(const CvDetails& details, const LanguageTables& texts);

    // Ticks the boxes as this value of the same CV has its bits, from 0 to 255.
    void showValue(int value);

signals:
    // Somebody has ticked or cleared a box.
    void bitChosen(int weight, bool on);

private:
    int value() const;
    void showSum();
    void showReasons();

    std::array<WrappingCheckBox*, 8> boxes_; // weight 1 first
    QLabel* sumLabel_;
    QLabel* sum_;
    CvDetails details_;
    QString ofNumber_; // why a box is disabled
    QString withoutMeaning_;
    QString withoutMeaningSet_;
};

} // namespace karvo
