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
    Text address() const
    {
        return toText(QStringLiteral("http://127.0.0.1:%1/KarvoUpd.zip").arg(server_.serverPort()));
    }

    std::vector<QByteArray> replies; // one for each request
    bool hangsUp = true;
    std::size_t requests = 0;

private:
    void answer(QTcpSocket& socket)
    {
        if (!socket.readAll().contains("\r\n\r\n"))
            return;
        if (requests++ < replies.size())
            socket.write(replies[requests - 1]);
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
        shown = std::to_string(received) + " of " + std::to_string(total);
    }
    bool stopRequested() override { return stops; }

    bool stops = false;
    std::string shown;
};

const QByteArray ok = "HTTP/1.1 200 OK\r\n";

QByteArray reply(const QByteArray& content, const QByteArray& further = {})
{
    return ok + further + "Content-Length: " + QByteArray::number(content.size()) + "\r\n\r\n" + content;
}

QByteArray chunked(const QByteArray& content, const char* behind = "0\r\n\r\n")
{
    return ok + "Transfer-Encoding: chunked\r\n\r\n" + QByteArray::number(content.size(), 16) + "\r\n" +
           content + "\r\n" + behind;
}

QByteArray redirection(const QByteArray& target)
{
    return "HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " + target + "\r\n\r\n";
}

struct QtDownloaderTest : testing::Test {
    // What lies there afterwards: the old file, or the new one.
    void expectFetched(const Text& address, DownloadEnd end, const std::string& content)
    {
        EXPECT_EQ(QtDownloader(wait, limits).fetch(address, scratch.path() / "KarvoUpd.zip", watcher), end);
        EXPECT_EQ(scratch.listing(), "KarvoUpd.zip ") << "nothing beside it";
        EXPECT_EQ(scratch.read("KarvoUpd.zip"), content);
        scratch.write("KarvoUpd.zip", "old");
        server.requests = 0;
    }

    test::ScratchFolder scratch;
    std::filesystem::path old = scratch.write("KarvoUpd.zip", "old");
    QtWait wait;
    WebServer server;
    Watcher watcher;
    DownloadLimits limits{.silence = 5s, .total = 10s, .bytes = 1000, .redirects = 2};
};

TEST_F(QtDownloaderTest, ReplacesTheFileWhenItHasComeWhole)
{
    server.replies = {redirection("/other"), reply("new content")};
    expectFetched(server.address(), DownloadEnd::complete, "new content");
    EXPECT_EQ(watcher.shown, "11 of 11");
}

// Whether a reply in chunks was cut off the archive itself has to tell; what is packed for the way is
// unpacked.
TEST_F(QtDownloaderTest, WhatIsNotWholeLeavesTheOldFile)
{
    const auto made = test::makeZip({{"a.txt", "some text"}});
    const QByteArray zip(made.data(), static_cast<qsizetype>(made.size()));
    const QByteArray deflated = qCompress(zip).mid(4); // without the length in front
    const QByteArray told8 = ok + "Content-Length: 8\r\n\r\nhalf";
    const QByteArray bare = ok + "\r\n";
    const QByteArray deflate = "Content-Encoding: deflate\r\n";
    const QByteArray page = "\xEF\xBB\xBF \n<!DOCTYPE HTML><title>Log in</title>";
    struct Case {
        const char* what;
        QByteArray reply;
        std::string content = "old"; // afterwards
        bool hangsUp = true;
    };
    const Case cases[] = {
        {"chunks", chunked(zip), made},
        {"chunks cut inside", chunked(zip.left(zip.size() / 2), "")},
        {"chunks cut before the last byte", chunked(zip.chopped(1), "")},
        {"chunks of nothing", chunked({}, "")},
        {"chunks of something else", chunked("text")},
        {"chunks that break off", chunked("abcde", "")},
        {"no length", bare + zip, made},
        {"no length, cut", bare + zip.chopped(1)},
        {"no length, something else", bare + "some bytes"},
        {"packed", reply(deflated, deflate), made},
        {"packed, cut", reply(deflated.left(deflated.size() / 2), deflate)},
        {"cut", told8},
        {"stalled", told8, "old", false},
        {"silent", {}, "old", false},
        {"hung up at once", {}},
        {"longer than told", ok + "Content-Length: 3\r\n\r\nfar too much", "far"},
        {"not found", "HTTP/1.1 404 Not Found\r\nContent-Length: 5\r\n\r\nsorry"},
        {"too large", reply(QByteArray(1001, 'x'))},
        {"told to be too large", ok + "Content-Length: 999999999999\r\n\r\nx"},
        {"empty", reply({})},
        {"a page", reply(page)},
        {"told to be a page", reply("hi", "Content-Type: text/html; charset=utf-8\r\n")},
        {"no web server", "hello"},
        {"redirected to a file", redirection("file:///etc/hostname")},
        {"redirected without end", redirection("/again")},
    };
    for (const Case& expected : cases) {
        SCOPED_TRACE(expected.what);
        server.replies.assign(4, expected.reply);
        server.hangsUp = expected.hangsUp;
        limits.silence = expected.hangsUp ? 5s : 200ms;
        const bool whole = expected.content != "old";
        expectFetched(server.address(), whole ? DownloadEnd::complete : DownloadEnd::failed,
                      expected.content);
    }
}

TEST_F(QtDownloaderTest, AddressesThatLeadNowhereFailAtOnce)
{
    for (const TextView address :
         {u"", u"KarvoUpd.zip", u"file:///etc/hostname", u"ftp://127.0.0.1/KarvoUpd.zip",
          u"http:///KarvoUpd.zip", u"http://127.0.0.1:1/KarvoUpd.zip"})
        expectFetched(Text(address), DownloadEnd::failed, "old");
    EXPECT_EQ(QtDownloader(wait).fetch(server.address(), scratch.path() / "missing/x", watcher),
              DownloadEnd::failed);
    EXPECT_EQ(server.requests, 0U);
}

// Bytes that keep trickling in are no silence.
TEST_F(QtDownloaderTest, EndsWhenAskedToAndHasALimitInAll)
{
    server.replies = {ok + "Content-Length: 8\r\n\r\nhalf"};
    server.hangsUp = false;
    watcher.stops = true;
    expectFetched(server.address(), DownloadEnd::cancelled, "old");
    watcher.stops = false;
    limits.total = 200ms;
    expectFetched(server.address(), DownloadEnd::failed, "old");
    wait.endProgram();
    expectFetched(server.address(), DownloadEnd::ended, "old");
}

} // namespace
} // namespace karvo
