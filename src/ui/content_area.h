// What a window shows above its buttons: it scrolls where the screen is too small for it.
#pragma once

#include <QScrollArea>

namespace karvo
{

class ContentArea : public QScrollArea
{
    Q_OBJECT

public:
    explicit ContentArea(QWidget* content, QWidget* parent = nullptr);

    // As the content would have it; at least as wide as it needs, and a few lines high.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // A turn of the wheel scrolls, and changes nothing that it only passes over.
    void guardFromWheel();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace karvo
