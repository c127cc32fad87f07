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
    void showCv(const CvDetails& details, const LanguageTables& texts);

signals:
    // Somebody has ticked or cleared a box: the value that all of them make.
    void valueChosen(int value);

private:
    int value() const;
    void showSum();

    std::array<WrappingCheckBox*, 8> boxes_; // weight 1 first
    QLabel* sumLabel_;
    QLabel* sum_;
};

} // namespace karvo
