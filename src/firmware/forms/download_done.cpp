#include "firmware/forms/download_done.h"

#include "firmware/download.h"
#include "ui/captions.h"

#include <QPushButton>

namespace karvo
{

DownloadDone::DownloadDone(const LanguageTables& texts, const std::filesystem::path& file, QWidget* owner)
    : MessageBox(NoIcon, boxTitle(texts, Caption::informationTitle), downloadedText(texts, file), Ok, owner)
{
    setObjectName(QStringLiteral("DownloadDone"));
    openFolder_ = addButton(karvo::buttonText(texts.caption(Caption::openFolder)), ActionRole);
    openFolder_->setObjectName(QStringLiteral("OpenFolder"));
    unpack_ = addButton(karvo::buttonText(texts.caption(Caption::unpackNow)), ActionRole);
    unpack_->setObjectName(QStringLiteral("Unpack"));
    nameBoxButton(*this, Ok, texts, Caption::okButton);
    setDefaultButton(Ok);
    setEscapeButton(Ok);
}

DownloadDone::Next DownloadDone::ask()
{
    exec();
    if (clickedButton() == openFolder_)
        return Next::openFolder;
    return clickedButton() == unpack_ ? Next::unpack : Next::nothing;
}

} // namespace karvo
