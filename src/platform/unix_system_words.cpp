#include "platform/system_words.h"

#include "platform/text_conversion.h"

namespace karvo
{

Text systemWords(const std::error_code& error)
{
    return toText(QString::fromLocal8Bit(error.message().c_str()));
}

} // namespace karvo
