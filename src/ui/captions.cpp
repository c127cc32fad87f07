#include "ui/captions.h"

namespace karvo
{

QString qtText(TextView text)
{
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

QString buttonText(TextView text)
{
    return qtText(text).replace(u'&', QStringLiteral("&&"));
}

QString filledCaption(const LanguageTables& texts, Caption number, std::initializer_list<Text> arguments)
{
    return qtText(texts.caption(number, arguments));
}

} // namespace karvo
