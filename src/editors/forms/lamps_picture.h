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
    int columnsIn(double width) const;
    QRectF cellOf(std::size_t place, double width) const; // a lamp, with its words below
    QString wordsOf(std::size_t place) const;
    double wordsHeight(double width) const;
    double levelOf(const ReceiverLamp& lamp) const;
    void paintLampIn(QPainter& painter, std::size_t place, const QRectF& cell) const;

    std::array<ReceiverLamp, 8> lamps_;
};

} // namespace karvo
