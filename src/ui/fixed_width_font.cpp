#include "ui/fixed_width_font.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QStringList>

namespace karvo
{

QFont fixedWidthFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (QFontInfo(font).fixedPitch())
        return font;
    for (const QString& family : QFontDatabase::families(QFontDatabase::Latin)) {
        if (QFontDatabase::isFixedPitch(family) && !QFontDatabase::isPrivateFamily(family)) {
            font.setFamily(family);
            break;
        }
    }
    return font;
}

} // namespace karvo
