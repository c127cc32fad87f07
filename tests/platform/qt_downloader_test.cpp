#include "platform/qt_downloader.h"

#include "platform/qt_wait.h"
#include "platform/text_conversion.h"
#include "support/scratch_folder.h"

#include "support/zip_maker.h"

#include <QTcpServer>
#include <QTcpSocket>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;
using test::ScratchFolder;

// A web server on this machine that sends what it is told, and then hangs up or keeps still.
class WebServer
{
public:
    WebServer()
    {
        server_.listen(QHostAddress::LocalHost);
        QObject::connect(&server_, &QTcpServer::newConnection, [this] {
            QTcpSocket* const socket = server_.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, [this, socket] { answer(*socket); });
        });
    }
    Text address(const char* path = "/KarvoUpd.zip") const
    {
        return toText(
            QStringLiteral("http://127.0.0.1:%1%2").arg(server_.serverPort()).arg(QLatin1String(path)));
    }

    std::vector<QByteArray> replies; // one for each request
    bool hangsUp = true;
    int requests = 0;

private:
    void answer(QTcpSocket& socket)
    {
        if (!socket.readAll().contains("\r\n\r\n"))
            return;
        const auto place = static_cast<std::size_t>(requests++);
        if (place < replies.size())
            socket.write(replies[place]);
        if (hangsUp)
            socket.disconnectFromHost();
    }

    QTcpServer server_;
};

class Watcher : public DownloadObserver
{
public:
    void showBytes(long long received, long long total) override
    {
        received_ = received;
        total_ = total;
    }
    bool stopRequested() override { return stops; }

    bool stops = false;
    long long received_ = -1;
    long long total_ = -1;
};

QByteArray reply(const QByteArray& content, const char* length = nullptr)
{
    return "HTTP/1.1 200 OK\r\nContent-Length: " +
           (length != nullptr ? QByteArray(length) : QByteArray::number(content.size())) + "\r\n\r\n" +
           content;
}

class QtDownloaderTest : public testing::Test
{
protected:
    DownloadEnd fetch() { return fetch(server.address()); }
    DownloadEnd fetch(const Text& address)
    {
        return QtDownloader(wait, limits).fetch(address, scratch.path() / "KarvoUpd.zip", watcher);
    }
    // What lies there: the old file, or the new one.
    std::string content()
    {
        EXPECT_EQ(scratch.listing(), "KarvoUpd.zip ") << "nothing beside it";
        return scratch.read("KarvoUpd.zip");
    }

    ScratchFolder scratch;
    std::filesystem::path old = scratch.write("KarvoUpd.zip", "old");
    QtWait wait;
    WebServer server;
    Watcher watcher;
    DownloadLimits limits{.silence = 300ms, .total = 5s, .bytes = 1000, .redirects = 2};
};

} // namespace

TEST_F(QtDownloaderTest, ReplacesTheFileWhenItHasComeWhole)
{
    server.replies = {reply("new content")};
    EXPECT_EQ(fetch(), DownloadEnd::complete);
    EXPECT_EQ(content(), "new content");
    EXPECT_EQ(watcher.received_, 11);
    EXPECT_EQ(watcher.total_, 11);
}

// Whether a reply in chunks was cut off the archive itself has to tell; what is packed for the way is
// unpacked.
TEST_F(QtDownloaderTest, TakesAnArchiveWithoutAToldLengthWhenItHasItsEnd)
{
    limits.bytes = 10'000;
    const auto made = test::makeZip({{"a.txt", "some text"}});
    const QByteArray zip(made.data(), static_cast<qsizetype>(made.size()));
    const auto chunked = [](const QByteArray& content, const char* behind = "0\r\n\r\n") {
        return "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" +
               QByteArray::number(content.size(), 16) + "\r\n" + content + "\r\n" + behind;
    };
    // zlib's form is that of "deflate", behind four bytes of length.
    const auto packed = [](const QByteArray& content) {
        return "HTTP/1.1 200 OK\r\nContent-Encoding: deflate\r\nContent-Length: " +
               QByteArray::number(content.size()) + "\r\n\r\n" + content;
    };
    const QByteArray deflated = qCompress(zip).mid(4);
    struct Case {
        const char* what;
        QByteArray reply;
        bool whole;
    };
    const Case cases[] = {
        {"chunks", chunked(zip), true},
        {"chunks cut inside", chunked(zip.left(zip.size() / 2), ""), false},
        {"chunks cut before the last byte", chunked(zip.chopped(1), ""), false},
        {"chunks of nothing", chunked({}, ""), false},
        {"chunks of something else", chunked("text"), false},
        {"without a length", "HTTP/1.1 200 OK\r\n\r\n" + zip, true},
        {"without a length, cut", "HTTP/1.1 200 OK\r\n\r\n" + zip.chopped(1), false},
        {"packed", packed(deflated), true},
        {"packed, cut", packed(deflated.left(deflated.size() / 2)), false},
    };
    for (const Case& expected : cases) {
        server.requests = 0;
        server.replies = {expected.reply};
        EXPECT_EQ(fetch(), expected.whole ? DownloadEnd::complete : DownloadEnd::failed) << expected.what;
        EXPECT_EQ(content(), expected.whole ? made : "old") << expected.what;
        scratch.write("KarvoUpd.zip", "old");
    }
}

TEST_F(QtDownloaderTest, FollowsAFewRedirectsWithinTheWeb)
{
    const auto to = [&](const QByteArray& target) {
        return "HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " + target + "\r\n\r\n";
    };
    server.replies = {to("/other"), reply("new")};
    EXPECT_EQ(fetch(), DownloadEnd::complete);
    EXPECT_EQ(content(), "new");
    for (const QByteArray& target : {QByteArray("file:///etc/hostname"), QByteArray("/again")}) {
        server.requests = 0;
        server.replies = {to(target), to(target), to(target), to(target)};
        EXPECT_EQ(fetch(), DownloadEnd::failed) << target.toStdString();
        EXPECT_EQ(content(), "new");
    }
}

TEST_F(QtDownloaderTest, WhatIsNotWholeLeavesTheOldFile)
{
    struct Case {
        const char* what;
        QByteArray reply;
        bool hangsUp;
    };
    const Case cases[] = {
        {"cut", reply("half", "8"), true},
        {"stalled", reply("half", "8"), false},
        {"silent", {}, false},
        {"hung up at once", {}, true},
        {"longer than told", reply("far too much", "3"), true},
        {"without a length", "HTTP/1.1 200 OK\r\n\r\nsome bytes", true},
        {"chunks that break off", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nabcde\r\n",
         true},
        {"not found", "HTTP/1.1 404 Not Found\r\nContent-Length: 5\r\n\r\nsorry", true},
        {"too large", reply(QByteArray(1001, 'x')), true},
        {"told to be too large", reply("x", "999999999999"), true},
        {"empty", reply({}), true},
        {"a page", reply("\xEF\xBB\xBF \n<!DOCTYPE HTML><title>Log in</title>"), true},
        {"told to be a page",
         "HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=utf-8\r\nContent-Length: 2\r\n\r\nhi", true},
        {"no web server", "hello", true},
    };
    for (const Case& expected : cases) {
        server.requests = 0;
        server.replies = {expected.reply};
        server.hangsUp = expected.hangsUp;
        const auto end = fetch();
        if (std::string(expected.what) == "longer than told") // what follows the told length is no part of it
            EXPECT_EQ(end, DownloadEnd::complete);
        else
            EXPECT_EQ(end, DownloadEnd::failed) << expected.what;
        EXPECT_EQ(content(), end == DownloadEnd::complete ? "far" : "old") << expected.what;
        scratch.write("KarvoUpd.zip", "old");
    }
}

TEST_F(QtDownloaderTest, AddressesThatLeadNowhereFailAtOnce)
{
    for (const TextView address :
         {u"", u"KarvoUpd.zip", u"file:///etc/hostname", u"ftp://127.0.0.1/KarvoUpd.zip",
          u"http:///KarvoUpd.zip", u"http://127.0.0.1:1/KarvoUpd.zip"}) {
        EXPECT_EQ(fetch(Text(address)), DownloadEnd::failed) << utf8FromText(address);
        EXPECT_EQ(content(), "old");
    }
    EXPECT_EQ(QtDownloader(wait).fetch(server.address(), scratch.path() / "missing/x", watcher),
              DownloadEnd::failed);
    EXPECT_EQ(server.requests, 0);
}

TEST_F(QtDownloaderTest, EndsWhenAskedTo)
{
    server.replies = {reply("half", "8")};
    server.hangsUp = false;
    watcher.stops = true;
    EXPECT_EQ(fetch(), DownloadEnd::cancelled);
    EXPECT_EQ(content(), "old");
    watcher.stops = false;
    wait.endProgram();
    EXPECT_EQ(fetch(), DownloadEnd::ended);
    EXPECT_EQ(content(), "old");
}

// Bytes that keep trickling in are no silence.
TEST_F(QtDownloaderTest, HasALimitInAll)
{
    limits.total = 400ms;
    limits.silence = 10s;
    server.replies = {reply("half", "8")};
    server.hangsUp = false;
    EXPECT_EQ(fetch(), DownloadEnd::failed);
    EXPECT_EQ(content(), "old");
}

} // namespace karvo
