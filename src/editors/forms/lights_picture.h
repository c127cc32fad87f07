// The lights of a vehicle as they shine, and what it is doing meanwhile.
#pragma once

#include "editors/forms/picture.h"
#include "editors/vehicle_lights.h"

#include <vector>

class QCheckBox;
class QComboBox;
class QLayout;

namespace karvo
{

// The vehicle, and beside or below it every light with what it does in words.
class LightsCanvas : public MovingPicture
{
    Q_OBJECT

public:
    LightsCanvas(const PictureWords& words, QWidget* parent);

    void setScene(const LightScene& scene);

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
    // Where the vehicle and the words stand in a picture of that width.
    struct Places {
        QRectF vehicle;
        QRectF words;
        int columns;
    };
    Places placesFor(int width) const;
    double rowWidth() const;
    int rowsIn(int columns) const;
    QString moment() const; // what is lit now
    void paintWords(QPainter& painter, const Places& places,
                    const std::array<double, lightCount>& levels) const;
    std::array<double, lightCount> shownLevels();

    LightScene scene_;
    std::vector<LightCourse> courses_;
    struct Row {
        QString text;
        std::optional<Light> light; // none for a heading
    };
    std::vector<Row> rows_;
    LightLevels levels_;
};

class LightsPicture : public Picture
{
    Q_OBJECT

public:
    LightsPicture(const PictureWords& words, bool trailer, QWidget* parent);

    void setAnimated(bool animated) override { canvas_->setAnimated(animated); }

protected:
    void valuesChanged() override;

private:
    void addMotions(QLayout& row);
    void addSwitches(QLayout& row);
    QCheckBox* addSwitch(QLayout& row, const QString& name, const Text& text, std::vector<bool*> switched);

    LightScene scene_;
    LightsCanvas* canvas_;
    QComboBox* motion_;
    QCheckBox* batteryLow_ = nullptr;
};

} // namespace karvo
