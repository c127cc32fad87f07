#include "ui/window_places.h"

#include "ui/captions.h"
#include "ui/form.h"
#include "ui/typed_text.h"
#include "ui/usual_size.h"

#include <QApplication>
#include <QEvent>

#include <string>

namespace karvo
{

namespace
{

constexpr std::string_view section = "Window";

} // namespace

void storeBytes(Settings& settings, std::string_view key, const QByteArray& bytes)
{
    settings.save(section, key, typedText(QString::fromLatin1(bytes.toBase64())));
}

QByteArray storedBytes(const Settings& settings, std::string_view key)
{
    const auto stored = settings.get(section, key);
    return stored ? QByteArray::fromBase64(qtText(*stored).toLatin1()) : QByteArray();
}

void storePlace(Settings& settings, std::string_view key, const QWidget& window)
{
    storeBytes(settings, key, window.saveGeometry());
}

void restorePlace(const Settings& settings, std::string_view key, QWidget& window)
{
    if (window.restoreGeometry(storedBytes(settings, key)))
        keepOnScreen(window);
}

WindowPlaces::WindowPlaces(Settings& settings, QObject* parent) : QObject(parent), settings_(settings)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool WindowPlaces::eventFilter(QObject* watched, QEvent* event)
{
    const auto type = event->type();
    const bool isShownOrHidden = (type == QEvent::Show || type == QEvent::Hide) && !event->spontaneous();
    if (!isShownOrHidden && type != QEvent::WindowActivate)
        return false;
    auto* const window = qobject_cast<Form*>(watched);
    if (window == nullptr)
        return false;
    if (type == QEvent::Show)
        restore(*window);
    else if (type == QEvent::Hide)
        keep(*window);
    else if (!opened_.contains(window)) // where the window system has put it
        opened_.insert(window, window->geometry());
    return false;
}

void WindowPlaces::restore(QWidget& window)
{
    restorePlace(settings_, window.objectName().toStdString(), window);
}

// A window that nobody touched is left to its content: other words need another size.
void WindowPlaces::keep(const QWidget& window)
{
    const auto opened = opened_.constFind(&window);
    if (opened == opened_.constEnd())
        return;
    if (*opened != window.geometry())
        storePlace(settings_, window.objectName().toStdString(), window);
    opened_.erase(opened);
}

} // namespace karvo
