// The side of the main window that shows the current CV, and where its value is changed.
#pragma once

#include "cvdata/cv_details.h"
#include "cvdata/typed_entry.h"
#include "language/language_tables.h"

#include <QWidget>

class QCheckBox;
class QGridLayout;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace karvo
{

class BitBoxes;

// What can be done with the current CV, and with the list.
struct PanelAvailability {
    bool choosing = false;   // there is a list in which to choose
    bool changing = false;   // the current CV has a value, and nothing is going on
    bool takingBack = false; // the current CV differs from what was read
    bool takingAllBack = false;
    bool writingOne = false;
    bool writingChanged = false;
    QString whyNoWriting; // told where nothing can be written to this decoder at all; else empty
};

class CvPanel : public QWidget
{
    Q_OBJECT

public:
    explicit CvPanel(QWidget* parent = nullptr);

    void applyCaptions(const LanguageTables& texts);

    // `expert` is empty without expert knowledge of the CV. What was typed and not taken is dropped.
    void showCv(const CvDetails& details, const Text& expert, const LanguageTables& texts);

    void setAvailable(const PanelAvailability& available);
    void setNotice(bool wanted);

    // Puts the keyboard into the value, over what stands there, or with a first digit in its place.
    void beginEntry(const QString& digit = QString());

    // What stands in the fields and is not what showCv() has shown.
    TypedEntry pendingEntry() const;

    // What was refused stands in its field again, with the keyboard over it.
    void returnToNumber(const Text& typed);
    void returnToValue(const Text& typed);

signals:
    // The keyboard has left a field, not for another window or for a menu.
    void entryLeft();
    // What is typed has to be settled now: it was entered, or the other field is being typed in.
    void settlingWanted();
    void valueEntered();
    void bitChosen(int weight, bool on);
    void entryCancelled();
    void takeBackWanted();
    void takeBackAllWanted();
    void writeSingleWanted();
    void writeChangedWanted();
    void noticeChosen(bool wanted);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QGridLayout* fieldsLayout();
    QHBoxLayout* takeBackLayout();
    void connectControls();
    void settleOtherField(QLineEdit* typed);
    void followValue();
    bool isPending(const QLineEdit* field) const;
    void cancelEntry();
    QLineEdit* addField(const char* name);
    QLabel* addText(const char* name);

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
    QPushButton* takeBack_;
    QPushButton* takeAllBack_;
    BitBoxes* bits_;
    QLabel* explanation_;
    QLabel* values_;
    QLabel* advice_;
    QLabel* expert_;
    QPushButton* writeSingle_;
    QPushButton* writeChanged_;
    QCheckBox* notice_;
    QString shownNumber_;
    QString shownValue_;
};

} // namespace karvo
