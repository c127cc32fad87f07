// One field of a function sheet as a row of a grid: name, CV, control, factory value, and whether it differs.
#pragma once

#include "editors/sheet_values.h"

#include <QObject>

#include <functional>
#include <vector>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QSlider;
class QSpinBox;

namespace karvo
{

struct SheetRowWords {
    const LanguageTables& texts;
    bool decimalComma;
    const CvTable& list; // what the sheet sets is told with what it was
};

class SheetFieldRow : public QObject
{
    Q_OBJECT

public:
    // The columns that a row takes.
    static constexpr int columns = 5;
    static constexpr int controlColumn = 2;

    // `field` outlives it. The controls belong to `parent`, which is their layout's widget.
    SheetFieldRow(const SheetViewField& field, const SheetRowWords& words, QGridLayout& grid,
                  QWidget* parent);

    void showValues(const SheetValues& values);

    // What there is to know of the field, over several lines.
    QString help() const;

signals:
    void valueChosen(const karvo::SheetViewField& field, int value);
    void switchChosen(const karvo::SheetSwitch& one, bool on);
    void addressesWanted();
    // One of its controls has the keyboard now.
    void entered();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* control();
    QWidget* switches();
    QWidget* choice();
    QWidget* number();
    QWidget* address();
    QWidget* text();
    QString becoming() const;
    QString plainName() const; // of who has no eyes: the name and the CVs
    QString cvs() const;
    QString factory() const;
    int shownPart(int value) const;
    Text yesOrNo(const SheetSwitch& one) const; // of its factory value
    void showNumber(std::optional<int> value);
    void showChoice(std::optional<int> value);
    void nameControl(QWidget& control, const char* suffix = "");

    const SheetViewField& field_;
    SheetRowWords words_;
    QWidget* parent_;
    QLabel* mark_;
    std::vector<QCheckBox*> boxes_; // as the field's switches
    QComboBox* choice_ = nullptr;
    QSpinBox* spin_ = nullptr;
    QSlider* slider_ = nullptr;
    QLabel* meaning_ = nullptr;
};

} // namespace karvo
