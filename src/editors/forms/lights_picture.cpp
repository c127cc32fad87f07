#include "editors/forms/lights_picture.h"

#include "editors/forms/vehicle_drawing.h"
#include "ui/captions.h"
#include "ui/flow_layout.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace karvo
{

namespace
{

constexpr int lineHeightsOfVehicle = 9;

QString rowText(const PictureWords& words, const LightCourse& course, bool trailer)
{
    const auto place = static_cast<std::size_t>(course.light);
    const bool known = place < outputCount;
    return qtText(joined({known ? textFromNumber(static_cast<int>(place) + 1) : Text(), known ? u"  " : u"",
                          lightName(words, course.light, trailer), u": ", lightText(words, course)}));
}

} // namespace

LightsCanvas::LightsCanvas(const PictureWords& words, QWidget* parent)
    : MovingPicture(QStringLiteral("lights_canvas"), words, Caption::pictureLights, parent)
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void LightsCanvas::setScene(const LightScene& scene)
{
    const bool otherMotion = scene.motion != scene_.motion;
    scene_ = scene;
    courses_ = lightCourses(values(), scene_);
    describe();
    restart(otherMotion ? 0 : now());
    if (isPaused())
        levels_.settle(courses_, now());
}

void LightsCanvas::valuesChanged()
{
    setScene(scene_);
}

QString LightsCanvas::moment() const
{
    TextView separator = u": ";
    Text text = durationText(now(), words().decimalComma);
    for (const LightCourse& course : courses_)
        if (levelAt(course, now()) > 0)
            text = joined(
                {text, std::exchange(separator, u", "), lightName(words(), course.light, scene_.trailer)});
    return qtText(text);
}

void LightsCanvas::describe()
{
    rows_.clear();
    QStringList all;
    if (isStepped())
        all += moment();
    bool schematic = false;
    for (const LightCourse& course : courses_) {
        if (static_cast<std::size_t>(course.light) >= outputCount && rows_.size() == outputCount) {
            const QString heading = qtText(words().texts.caption(Caption::outputsNotKnown));
            rows_.push_back({heading + u':', std::nullopt});
            all += rows_.back().text;
        }
        rows_.push_back({rowText(words(), course, scene_.trailer), course.light});
        all += rows_.back().text;
        schematic |= isSchematic(course);
    }
    const QString keys = qtText(words().texts.caption(Caption::pictureKeysHelp));
    const QString note = qtText(words().texts.caption(Caption::schematicNote));
    if (schematic)
        all += note;
    setAccessibleDescription(spoken(all));
    setToolTip(schematic ? keys + u'\n' + note : keys);
    updateGeometry();
}

bool LightsCanvas::moves() const
{
    return std::any_of(courses_.begin(), courses_.end(), changes);
}

double LightsCanvas::rowWidth() const
{
    double widest = 0;
    for (const Row& row : rows_)
        widest = std::max(widest, QFontMetricsF(font()).horizontalAdvance(row.text));
    return widest + 3 * fontMetrics().height();
}

int LightsCanvas::rowsIn(int columns) const
{
    return (static_cast<int>(rows_.size()) + columns - 1) / columns;
}

// The words stand beside the vehicle where there is room for them, else below it.
LightsCanvas::Places LightsCanvas::placesFor(int width) const
{
    const double line = fontMetrics().height() * 1.15;
    const double usual = fontMetrics().height() * lineHeightsOfVehicle;
    const double beside = width - usual * VehicleDrawing::widthToHeight;
    if (beside >= rowWidth()) {
        const int columns = std::max(1, static_cast<int>(beside / rowWidth()));
        const double height = std::max(usual, rowsIn(columns) * line);
        return {QRectF(0, 0, width - columns * rowWidth(), height),
                QRectF(width - columns * rowWidth(), 0, columns * rowWidth(), height), columns};
    }
    const double height = std::min(usual, width / VehicleDrawing::widthToHeight);
    const int columns = std::max(1, static_cast<int>(width / rowWidth()));
    return {QRectF(0, 0, width, height), QRectF(0, height + line / 4, width, rowsIn(columns) * line),
            columns};
}

int LightsCanvas::heightForWidth(int width) const
{
    const Places places = placesFor(width);
    return static_cast<int>(std::ceil(std::max(places.vehicle.bottom(), places.words.bottom())));
}

QSize LightsCanvas::sizeHint() const
{
    const int width = fontMetrics().height() * 52;
    return {width, heightForWidth(width)};
}

QSize LightsCanvas::minimumSizeHint() const
{
    return {fontMetrics().height() * 20, fontMetrics().height() * 8};
}

// A still picture shows each light as bright as it ever gets.
std::array<double, lightCount> LightsCanvas::shownLevels()
{
    if (!isStill())
        return levels_.at(courses_, now());
    std::array<double, lightCount> levels{};
    for (const LightCourse& course : courses_)
        if (const auto cause = shownCause(course))
            levels[static_cast<std::size_t>(course.light)] = course.brightness * cause->share;
    return levels;
}

void LightsCanvas::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Places places = placesFor(width());
    VehicleDrawing drawing{bodyOf(values(), scene_.trailer)};
    for (const LightCourse& course : courses_)
        drawing.has[static_cast<std::size_t>(course.light)] = true;
    drawing.levels = shownLevels();
    painter.fillRect(places.vehicle, roadColor());
    drawing.paint(painter, places.vehicle);
    painter.setPen(roadLineColor());
    const double edge = fontMetrics().height() / 3.0;
    showPaused(painter, places.vehicle.topRight() + QPointF(-edge, edge));
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRect(places.vehicle.adjusted(1, 1, -1, -1));
    }
    paintWords(painter, places, drawing.levels);
}

void LightsCanvas::paintWords(QPainter& painter, const Places& places,
                              const std::array<double, lightCount>& levels) const
{
    const int rows = rowsIn(places.columns);
    const double line = fontMetrics().height() * 1.15;
    const double size = line * 0.6;
    painter.setRenderHint(QPainter::Antialiasing);
    for (int row = 0; row < static_cast<int>(rows_.size()); ++row) {
        const Row& shown = rows_[static_cast<std::size_t>(row)];
        const QRectF place(places.words.left() + row / rows * rowWidth(),
                           places.words.top() + row % rows * line, rowWidth(), line);
        if (shown.light) {
            const QRectF lamp(place.left() + line * 0.5, place.center().y() - size / 2, size, size);
            const QRectF back = lamp.adjusted(-size / 3, -size / 3, size / 3, size / 3) & place;
            painter.save();
            painter.setClipRect(back);
            painter.fillRect(back, roadColor());
            paintLamp(painter, lamp, glassColor(*shown.light),
                      levels[static_cast<std::size_t>(*shown.light)]);
            painter.restore();
        }
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(place.adjusted(line * (shown.light ? 1.6 : 0.3), 0, 0, 0),
                         Qt::AlignLeft | Qt::AlignVCenter, shown.text);
    }
}

LightsPicture::LightsPicture(const PictureWords& words, bool trailer, QWidget* parent)
    : Picture(QStringLiteral("lights"), words, Caption::pictureLights, parent),
      canvas_(new LightsCanvas(words, this)),
      motion_(new QComboBox(this))
{
    scene_.trailer = trailer;
    scene_.isOn(Light::headlight) = scene_.isOn(Light::beacon1) = scene_.isOn(Light::beacon2) = true;
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins({});
    auto* const choices = new QWidget(this);
    auto* const flow = new FlowLayout(choices);
    addMotions(*flow);
    addSwitches(*flow);
    all->addWidget(choices);
    all->addWidget(canvas_);
}

void LightsPicture::addMotions(QLayout& row)
{
    const auto caption = [this](Caption number) { return words().texts.caption(number); };
    motion_->setObjectName(QStringLiteral("scene_motion"));
    motion_->setAccessibleName(qtText(caption(Caption::sceneMotion)));
    for (const Caption motion : {Caption::sceneDriving, Caption::sceneStanding, Caption::sceneBraking,
                                 Caption::sceneReversing, Caption::sceneEmergencyStop})
        motion_->addItem(qtText(joined({caption(Caption::sceneMotion), u" ", caption(motion)})));
    connect(motion_, &QComboBox::currentIndexChanged, this, [this](int chosen) {
        scene_.motion = static_cast<Motion>(chosen);
        canvas_->setScene(scene_);
    });
    row.addWidget(motion_);
}

void LightsPicture::addSwitches(QLayout& row)
{
    for (const Light light : {Light::headlight, Light::rearLight, Light::leftIndicator, Light::rightIndicator,
                              Light::interiorLight, Light::highBeam})
        if (!scene_.trailer || light != Light::highBeam)
            addSwitch(row, QStringLiteral("scene_%1").arg(static_cast<int>(light) + 1),
                      lightName(words(), light, scene_.trailer), {&scene_.isOn(light)});
    const auto caption = [this](Caption number) { return words().texts.caption(number); };
    addSwitch(row, QStringLiteral("scene_hazard"), caption(Caption::hazardLights), {&scene_.hazardLights});
    addSwitch(row, QStringLiteral("scene_beacons"), caption(Caption::beacons),
              {&scene_.isOn(Light::beacon1), &scene_.isOn(Light::beacon2)});
    batteryLow_ = addSwitch(row, QStringLiteral("scene_battery"), caption(Caption::sceneBatteryLow),
                            {&scene_.batteryLow});
}

QCheckBox* LightsPicture::addSwitch(QLayout& row, const QString& name, const Text& text,
                                    std::vector<bool*> switched)
{
    auto* const box = new QCheckBox(buttonText(text), this);
    box->setObjectName(name);
    box->setAccessibleName(qtText(text));
    box->setChecked(*switched.front());
    connect(box, &QCheckBox::toggled, this, [this, switched = std::move(switched)](bool on) {
        for (bool* const one : switched)
            *one = on;
        canvas_->setScene(scene_);
    });
    row.addWidget(box);
    return box;
}

void LightsPicture::valuesChanged()
{
    batteryLow_->setVisible(values()(26).has_value());
    canvas_->setValues(values());
    canvas_->setScene(scene_);
    setAccessibleDescription(canvas_->accessibleDescription());
}

} // namespace karvo
