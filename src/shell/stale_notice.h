// The line above the list that says that its values are those of before a firmware update.
#pragma once

#include "language/language_tables.h"

#include <QFrame>

class QLabel;
class QPushButton;

namespace karvo
{

class StaleNotice : public QFrame
{
    Q_OBJECT

public:
    explicit StaleNotice(QWidget* parent = nullptr);

    void applyCaptions(const LanguageTables& texts);
    void setLineBusy(bool busy);

signals:
    void readWanted();

private:
    QLabel* text_;
    QPushButton* read_;
};

} // namespace karvo
