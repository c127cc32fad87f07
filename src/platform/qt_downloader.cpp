#include "platform/qt_downloader.h"

#include "platform/received_body.h"
#include "platform/safe_file.h"
#include "platform/text_conversion.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>

#include <memory>

namespace karvo
{

namespace
{

// One download: what arrives goes into a file beside the target.
class Transfer
{
public:
    Transfer(QNetworkReply& reply, SafeFile& file, const DownloadLimits& limits, WorkObserver& observer)
        : reply_(reply), file_(file), limits_(limits), observer_(observer)
    {
    }

    // True when there is nothing more to be awaited.
    bool isOver() const { return failed_ || cancelled_ || reply_.isFinished(); }
    bool isCancelled() const { return cancelled_; }

    void takeBytes()
    {
        if (failed_ || cancelled_ || taking_)
            return;
        taking_ = true; // the observer may let events run
        const QByteArray bytes = reply_.readAll();
        body_.take(bytes);
        failed_ = !isExpected() || file_.write({reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                                static_cast<std::size_t>(bytes.size())});
        observer_.showProgress(static_cast<std::uint64_t>(body_.size()),
                               static_cast<std::uint64_t>(length().value_or(0)));
        cancelled_ = observer_.stopRequested();
        taking_ = false;
    }

    bool isWhole() const
    {
        const int status = reply_.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        constexpr int found = 200;
        if (failed_ || !reply_.isFinished() || reply_.error() != QNetworkReply::NoError || status != found)
            return false;
        return body_.size() > 0 && !isPage() && (length() == body_.size() || body_.isWholeZip());
    }

private:
    // Of what comes; nothing when that was packed for the way, for then another length was told.
    std::optional<long long> length() const
    {
        if (reply_.hasRawHeader("Content-Encoding"))
            return std::nullopt;
        const QVariant header = reply_.header(QNetworkRequest::ContentLengthHeader);
        return header.isValid() ? std::optional(header.toLongLong()) : std::nullopt;
    }

    bool isPage() const
    {
        const QString type = reply_.header(QNetworkRequest::ContentTypeHeader).toString();
        return type.startsWith(QLatin1String("text/html"), Qt::CaseInsensitive) || body_.isWebPage();
    }

    bool isExpected() const
    {
        return body_.size() <= limits_.bytes && length().value_or(body_.size()) <= limits_.bytes &&
               body_.size() <= length().value_or(body_.size());
    }

    QNetworkReply& reply_;
    SafeFile& file_;
    const DownloadLimits& limits_;
    WorkObserver& observer_;
    ReceivedBody body_;
    bool failed_ = false;
    bool cancelled_ = false;
    bool taking_ = false;
};

QNetworkRequest requestFor(const QUrl& url, const DownloadLimits& limits)
{
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setMaximumRedirectsAllowed(limits.redirects);
    request.setTransferTimeout(static_cast<int>(limits.silence.count()));
    return request;
}

bool isOfTheWeb(const QUrl& url)
{
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
}

} // namespace

DownloadEnd QtDownloader::fetch(const Text& address, const std::filesystem::path& target,
                                WorkObserver& observer)
{
    const QUrl url(toQString(address), QUrl::StrictMode);
    SafeFile file(target);
    if (!isOfTheWeb(url) || file.open())
        return DownloadEnd::failed;
    QNetworkAccessManager manager;
    const std::unique_ptr<QNetworkReply> reply(manager.get(requestFor(url, limits_)));
    Transfer transfer(*reply, file, limits_, observer);
    QObject::connect(reply.get(), &QNetworkReply::readyRead, reply.get(), [&] {
        transfer.takeBytes();
        wait_.wake();
    });
    QObject::connect(reply.get(), &QNetworkReply::finished, reply.get(), [&] { wait_.wake(); });
    // A person who cancels while nothing arrives is heard all the same.
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, reply.get(), [&] {
        transfer.takeBytes();
        wait_.wake();
    });
    constexpr int lookEvery = 100;
    look.start(lookEvery);
    const auto result = wait_.until([&] { return transfer.isOver(); }, limits_.total);
    look.stop();
    if (result == WaitResult::ended)
        return DownloadEnd::ended;
    transfer.takeBytes();
    if (transfer.isCancelled())
        return DownloadEnd::cancelled;
    return transfer.isWhole() && !file.commit() ? DownloadEnd::complete : DownloadEnd::failed;
}

} // namespace karvo
