#include "platform/received_body.h"

namespace karvo
{

namespace
{

constexpr qsizetype startLength = 512;
constexpr qsizetype endRecordLength = 22; // with its two bytes of the length of the comment behind it
constexpr qsizetype longestComment = 65535;

} // namespace

void ReceivedBody::take(const QByteArray& bytes)
{
    size_ += bytes.size();
    start_ += bytes.left(startLength - start_.size());
    end_ = (end_ + bytes).right(endRecordLength + longestComment);
}

bool ReceivedBody::isWebPage() const
{
    QByteArray start = start_;
    if (start.startsWith("\xEF\xBB\xBF"))
        start = start.mid(3);
    start = start.trimmed().toLower();
    return start.startsWith("<!doctype html") || start.startsWith("<html") || start.startsWith("<head");
}

bool ReceivedBody::isWholeZip() const
{
    if (!start_.startsWith("PK"))
        return false;
    const QByteArray mark("PK\x05\x06");
    for (qsizetype at = end_.lastIndexOf(mark); at >= 0; at = at == 0 ? -1 : end_.lastIndexOf(mark, at - 1)) {
        if (at + endRecordLength > end_.size())
            continue;
        const auto comment = static_cast<unsigned char>(end_[at + endRecordLength - 2]) +
                             256 * static_cast<unsigned char>(end_[at + endRecordLength - 1]);
        if (at + endRecordLength + comment == end_.size())
            return true;
    }
    return false;
}

} // namespace karvo
