// The function keys against what they switch, as a table in which a key is given something else.
#pragma once

#include "editors/forms/picture.h"

class QTableWidget;

namespace karvo
{

class KeyMapPicture : public Picture
{
    Q_OBJECT

public:
    KeyMapPicture(const PictureWords& words, QWidget* parent);

    void setAnimated(bool) override {} // nothing in it moves

    // The space bar and Enter choose, as a click does.
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void valuesChanged() override;

private:
    void choose(int row, int key);

    QTableWidget* table_;
};

} // namespace karvo
