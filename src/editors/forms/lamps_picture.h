// Eight lamps as a receiver lights them.
#pragma once

#include "editors/forms/picture.h"
#include "editors/receiver_lamps.h"

namespace karvo
{

class LampsPicture : public MovingPicture
{
    Q_OBJECT

public:
    LampsPicture(const PictureWords& words, QWidget* parent);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void valuesChanged() override;
    bool moves() const override;
    void describe() override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString notInForce() const; // empty where the outputs are lamps
    double lineHeight() const;
    QRectF box(double width) const;
    QRectF columnOf(std::size_t place, double width) const;
    QString wordsOf(std::size_t place) const;
    QRectF wordsBelow(const QRectF& column) const;
    double levelOf(const ReceiverLamp& lamp) const;
    void paintLampOf(QPainter& painter, std::size_t place, const QRectF& column) const;

    std::array<ReceiverLamp, 8> lamps_;
};

} // namespace karvo
