#include "shell/hauptform.h"

#include "cvdata/forms/cv_panel.h"
#include "shell/controllers.h"
#include "shell/main_menu.h"
#include "shell/menu_tree.h"
#include "shell/port_bar.h"
#include "shell/stale_notice.h"
#include "shell/status_line.h"
#include "ui/content_area.h"
#include "ui/fixed_width_list.h"
#include "ui/named.h"
#include "ui/usual_size.h"
#include "ui/window_places.h"

#include <QCloseEvent>
#include <QMenuBar>
#include <QSplitter>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

constexpr std::string_view geometryKey = "Geometry";
constexpr std::string_view splitterKey = "Splitter";

constexpr QSize usualSize(1180, 760);

} // namespace

Hauptform::Hauptform(const MainWindowSetup& setup)
    : state_(setup.bench.state),
      settings_(setup.bench.settings),
      menu_(new MainMenu(menuBar())),
      portBar_(new PortBar(state_.texts, setup.listPortDevices, this)),
      staleNotice_(new StaleNotice(this)),
      list_(named<FixedWidthList>("List1", this)),
      panel_(new CvPanel),
      statusLine_(new StatusLine(setup.simulatedInterface, this)),
      splitter_(named<QSplitter>("Splitter", this))
{
    build();
    controllers_ = std::make_unique<Controllers>(
        setup, MainWidgets{*this, *menu_, *portBar_, *staleNotice_, *list_, *panel_, *statusLine_});
    connect(menu_, &MainMenu::chosen, this, &Hauptform::carryOut);
    connect(menu_, &MainMenu::ownChosen, this, [this](const std::string& name) {
        if (controllers_->entry.takePending())
            controllers_->functions.openOwn(name);
    });
    controllers_->display.applyCaptions();
    controllers_->display.showList();
    setup.view.showStatus(state_.texts.caption(Caption::ready));
    restorePlacement();
    portBar_->focusStart();
}

Hauptform::~Hauptform() = default;

void Hauptform::readSoon()
{
    controllers_->reading.readSoon();
}

void Hauptform::closeEvent(QCloseEvent* event)
{
    savePlacement();
    event->setAccepted(controllers_->operations.mayClose());
}

void Hauptform::build()
{
    setObjectName(QStringLiteral("Hauptform"));
    list_->setMinimumWidth(list_->fontMetrics().averageCharWidth() * 17);

    auto* const panelArea = new ContentArea(panel_, this);
    panelArea->setObjectName(QStringLiteral("CurrentCvArea"));

    splitter_->setChildrenCollapsible(false);
    splitter_->addWidget(list_);
    splitter_->addWidget(panelArea);
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

// Nonsense in the settings leaves the usual size and place.
void Hauptform::restorePlacement()
{
    resizeToUsual(*this, usualSize);
    restorePlace(settings_, geometryKey, *this);
    splitter_->restoreState(storedBytes(settings_, splitterKey));
}

void Hauptform::savePlacement()
{
    storePlace(settings_, geometryKey, *this);
    storeBytes(settings_, splitterKey, splitter_->saveState());
}

// What is typed is settled first.
void Hauptform::carryOut(const MenuEntry& item)
{
    if (controllers_->entry.takePending())
        item.handler(*controllers_, item);
    else
        menu_->markLanguage(state_.language); // choosing another one has moved its tick
}

} // namespace karvo
