// How the main window is put together.
#include "cvdata/description_choice.h"
#include "cvdata/forms/cv_panel.h"
#include "shell/hauptform.h"
#include "shell/main_menu.h"
#include "shell/port_bar.h"
#include "shell/stale_notice.h"
#include "shell/status_line.h"
#include "ui/captions.h"
#include "ui/fixed_width_list.h"
#include "ui/typed_text.h"
#include "ui/usual_size.h"

#include <QAction>
#include <QEvent>
#include <QMenuBar>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QStyle>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

using namespace std::chrono_literals;

constexpr std::string_view placementSection = "Window";
constexpr std::string_view geometryKey = "Geometry";
constexpr std::string_view splitterKey = "Splitter";

constexpr QSize usualSize(1180, 760);

// Settings are texts.
Text storedForm(const QByteArray& bytes)
{
    return typedText(QString::fromLatin1(bytes.toBase64()));
}

QByteArray fromStoredForm(const std::optional<Text>& stored)
{
    return stored ? QByteArray::fromBase64(qtText(*stored).toLatin1()) : QByteArray();
}

// As wide as its widget needs, and no scroll bar below: only the height may be too small.
class UprightScrollArea : public QScrollArea
{
public:
    explicit UprightScrollArea(QWidget* content, QWidget* parent) : QScrollArea(parent)
    {
        setObjectName(QStringLiteral("CurrentCvArea"));
        setWidget(content);
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setFocusPolicy(Qt::NoFocus);
    }

    QSize minimumSizeHint() const override
    {
        const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
        return {widget()->minimumSizeHint().width() + bar, 6 * fontMetrics().height()};
    }

protected:
    // Other words need another width: without this the splitter keeps the one of the words before.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == widget() && event->type() == QEvent::LayoutRequest)
            updateGeometry();
        return QScrollArea::eventFilter(watched, event);
    }
};

} // namespace

void Hauptform::buildWindow()
{
    setObjectName(QStringLiteral("Hauptform"));
    menu_ = new MainMenu(menuBar());
    list_->setObjectName(QStringLiteral("List1"));
    list_->setMinimumWidth(list_->fontMetrics().averageCharWidth() * 17);

    splitter_ = new QSplitter(Qt::Horizontal);
    splitter_->setObjectName(QStringLiteral("Splitter"));
    splitter_->setChildrenCollapsible(false);
    splitter_->addWidget(list_);
    splitter_->addWidget(new UprightScrollArea(panel_, splitter_));
    splitter_->setStretchFactor(0, 1);
    splitter_->setSizes({700, 440});

    auto* const centre = new QWidget(this);
    auto* const layout = new QVBoxLayout(centre);
    layout->addWidget(portBar_);
    layout->addWidget(staleNotice_);
    layout->addWidget(splitter_, 1);
    setCentralWidget(centre);
    setStatusBar(statusLine_);
}

void Hauptform::buildTimers()
{
    const auto set = [this](QTimer& timer, const char* name, std::chrono::milliseconds interval) {
        timer.setParent(this);
        timer.setObjectName(QString::fromLatin1(name));
        timer.setInterval(interval);
    };
    set(blinkTimer_, "Timer2", 750ms);
    set(readTimer_, "Timer3", 100ms);
    set(sequenceTimer_, "Timer4", 200ms);
    readTimer_.setSingleShot(true);
    sequenceTimer_.setSingleShot(true);
    connect(&blinkTimer_, &QTimer::timeout, statusLine_, &StatusLine::blink);
    connect(&readTimer_, &QTimer::timeout, this, [this] { read(ReadStarter::other); });
}

// Nonsense in the settings leaves the usual size and place.
void Hauptform::restorePlacement()
{
    resizeToUsual(*this, usualSize);
    restoreGeometry(fromStoredForm(bench_.settings.get(placementSection, geometryKey)));
    splitter_->restoreState(fromStoredForm(bench_.settings.get(placementSection, splitterKey)));
}

void Hauptform::savePlacement()
{
    bench_.settings.save(placementSection, geometryKey, storedForm(saveGeometry()));
    bench_.settings.save(placementSection, splitterKey, storedForm(splitter_->saveState()));
}

void Hauptform::connectView(MainWindowView& view)
{
    connect(&view, &MainWindowView::statusShown, this,
            [this](const Text& text) { statusLine_->showStatus(qtText(text)); });
    connect(&view, &MainWindowView::progressShown, this,
            [this](std::size_t done, std::size_t total) { statusLine_->showProgress(texts_, done, total); });
    connect(&view, &MainWindowView::writeProgressShown, this,
            [this](int cv, std::size_t remaining) { statusLine_->showWriteProgress(texts_, cv, remaining); });
    connect(&view, &MainWindowView::readingShown, statusLine_, &StatusLine::showReading);
    connect(&view, &MainWindowView::hourglassShown, this, [this](bool shown) {
        if (shown)
            setCursor(Qt::WaitCursor);
        else
            unsetCursor();
    });
    connect(&view, &MainWindowView::lineBusyShown, this, &Hauptform::showLineBusy);
    connect(&view, &MainWindowView::listReplaced, this, &Hauptform::showList);
}

void Hauptform::connectControls()
{
    connect(portBar_, &PortBar::portChosen, this, &Hauptform::choosePortNumber);
    connect(portBar_, &PortBar::readWanted, this, [this] { read(ReadStarter::button); });
    connect(portBar_, &PortBar::servoAddressesWanted, this, &Hauptform::editServoAddresses);
    const auto onKey = [this](Qt::Key key, const char* name, auto handler) {
        auto* const shortcut = new QShortcut(QKeySequence(key), this);
        shortcut->setObjectName(QString::fromLatin1(name));
        connect(shortcut, &QShortcut::activated, this, handler);
    };
    onKey(Qt::Key_F1, "Help", &Hauptform::showHelp);
    onKey(Qt::Key_F3, "NextHit", &Hauptform::findNext);
}

void Hauptform::connectMenu()
{
    const auto on = [this](std::string_view item, auto act) { whenChosen(item, act); };
    on("mnu_exit", [this] { close(); });
    on("mnu_read_all", [this] { read(ReadStarter::other); });
    on("mnu_standart", &Hauptform::showStandard);
    on("mnu_clear", &Hauptform::clear);
    on("mnu_com", &Hauptform::findPorts);
    on("mnu_index", &Hauptform::askCvNumber);
    on("mnu_suchen_generell", &Hauptform::askWord);
    on("mnu_version", &Hauptform::showVersion);
    on("mnu_about", &Hauptform::showAbout);
    on("mnu_cv_datei", &Hauptform::showDecoderInfo);
    on("mnu_hilfe_XT", &Hauptform::showModuleHelp);
    for (const LanguageCode code : allLanguages)
        on(languageFiles(code).menuItem, [this, code] { changeLanguage(code); });
    for (const OfflineList& list : offlineLists())
        on(list.menuItem, [this, item = list.menuItem] { showOffline(item); });
}

} // namespace karvo
