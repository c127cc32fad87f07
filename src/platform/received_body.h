// What has been received of a download, as far as it tells whether that is a whole file.
#pragma once

#include <QByteArray>

namespace karvo
{

// Keeps the first and the last bytes of what passes through.
class ReceivedBody
{
public:
    void take(const QByteArray& bytes);

    long long size() const { return size_; }

    // A web page: what a server, or a network that wants a log-in first, says in place of the file.
    bool isWebPage() const;

    // A ZIP archive up to its end record. Such an archive cannot have been cut off.
    bool isWholeZip() const;

private:
    QByteArray start_;
    QByteArray end_;
    long long size_ = 0;
};

} // namespace karvo
