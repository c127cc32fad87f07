#include "editors/forms/settings_page.h"

#include "ui/captions.h"
#include "ui/named.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

constexpr QSize usualSize(820, 680);

} // namespace

SettingsPage::SettingsPage(const LanguageTables& texts, Prompts& prompts, const char* name,
                           const QString& title, std::vector<DescribedGroup> groups, QWidget* parent)
    : Form(texts, name, title, parent),
      prompts_(prompts),
      groups_(std::move(groups)),
      page_(named<QTextBrowser>("Seite", this, title))
{
    setUsualSize(usualSize);
    column().addWidget(textLabel("Hinweis", this, shown(Caption::settingsNote)));
    page_->setOpenLinks(false);
    page_->setHtml(asHtml());
    connect(page_, &QTextBrowser::anchorClicked, this, &SettingsPage::open);
    column().addWidget(page_, 1);
    connect(addButton("Kopieren", Caption::settingsCopy, ButtonRow::ActionRole), &QPushButton::clicked, this,
            &SettingsPage::copy);
    connect(addButton("Print", Caption::printButton, ButtonRow::ActionRole), &QPushButton::clicked, this,
            &SettingsPage::print);
    addButton("Schliessen", Caption::closeButton, ButtonRow::RejectRole);
}

QString SettingsPage::asHtml() const
{
    // A link as readable as other text, in light and dark.
    QString html = QStringLiteral("<style>a { color: %1; text-decoration: none; }</style>")
                       .arg(palette().color(QPalette::Text).name());
    for (const DescribedGroup& group : groups_) {
        html += QStringLiteral("<h3>%1</h3>").arg(qtText(group.title).toHtmlEscaped());
        for (const DescribedSetting& setting : group.settings) {
            QString line = qtText(setting.sentence).toHtmlEscaped();
            if (!setting.item.empty())
                line =
                    QStringLiteral("<a href=\"%1\">%2</a>").arg(QString::fromStdString(setting.item), line);
            html += QStringLiteral("<p style=\"margin: 2px 0 2px 12px\">%1</p>")
                        .arg(setting.isFactory ? line : QStringLiteral("<b>%1</b>").arg(line));
        }
    }
    return html;
}

void SettingsPage::open(const QUrl& link)
{
    chosen_ = link.toString().toStdString();
    accept();
}

void SettingsPage::copy()
{
    QGuiApplication::clipboard()->setText(page_->toPlainText());
}

void SettingsPage::print()
{
    if (QPrinterInfo::availablePrinterNames().isEmpty()) {
        prompts_.message(texts_.message(Message::noPrinter), PromptIcon::warning);
        return;
    }
    QPrinter printer;
    printer.setDocName(windowTitle());
    QPrintDialog dialog(&printer, this);
    dialog.setObjectName(QStringLiteral("PrintDialog"));
    dialog.setWindowTitle(windowTitle());
    if (dialog.exec() != QDialog::Accepted)
        return;
    page_->document()->print(&printer);
    if (printer.printerState() == QPrinter::Error)
        prompts_.message(texts_.message(Message::cannotPrint), PromptIcon::warning);
}

} // namespace karvo
