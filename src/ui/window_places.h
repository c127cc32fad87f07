// Where windows stood and how large they were, from one opening to the next.
#pragma once

#include "program/settings.h"

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QRect>

namespace karvo
{

// Watches every `Form` that opens and closes, as long as it exists. One that the person moved or resized
// comes back like that, under its name; on a screen that is gone, it moves to one that is there.
class WindowPlaces : public QObject
{
    Q_OBJECT

public:
    // Of the running application. `settings` outlive it.
    explicit WindowPlaces(Settings& settings, QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void restore(QWidget& window);
    void keep(const QWidget& window);

    Settings& settings_;
    QHash<const QObject*, QRect> opened_; // where each window stood when it had just opened
};

// What the toolkit keeps of a window's part as bytes, and back: settings are texts.
void storeBytes(Settings& settings, std::string_view key, const QByteArray& bytes);
QByteArray storedBytes(const Settings& settings, std::string_view key);

// A window's place, and back; what is no place leaves the window as it is.
void storePlace(Settings& settings, std::string_view key, const QWidget& window);
void restorePlace(const Settings& settings, std::string_view key, QWidget& window);

} // namespace karvo
