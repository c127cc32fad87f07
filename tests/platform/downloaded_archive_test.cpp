// An archive on its way: fetched from a web server, and read.
#include "platform/qt_downloader.h"
#include "platform/qt_wait.h"
#include "platform/text_conversion.h"
#include "platform/zip_archive.h"
#include "support/scratch_folder.h"
#include "support/zip_maker.h"

#include <QTcpServer>
#include <QTcpSocket>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;
using test::makeZip;
using Kind = ArchiveEntry::Kind;

const QByteArray ok = "HTTP/1.1 200 OK\r\n";

QByteArray reply(const QByteArray& content, const QByteArray& further = {})
{
    return ok + further + "Content-Length: " + QByteArray::number(content.size()) + "\r\n\r\n" + content;
}

QByteArray chunked(const QByteArray& content, const char* behind)
{
    return ok + "Transfer-Encoding: chunked\r\n\r\n" + QByteArray::number(content.size(), 16) + "\r\n" +
           content + "\r\n" + behind;
}

QByteArray redirection(const QByteArray& target)
{
    return "HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " + target + "\r\n\r\n";
}

// With a web server on this machine that sends what it is told, and then hangs up or keeps still.
struct QtDownloaderTest : testing::Test, WorkObserver {
    QtDownloaderTest()
    {
        server.listen(QHostAddress::LocalHost);
        QObject::connect(&server, &QTcpServer::newConnection, [this] {
            QTcpSocket* const socket = server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, [this, socket] { answer(*socket); });
        });
    }
    void answer(QTcpSocket& socket)
    {
        socket.readAll();
        socket.write(requests++ == 0 ? firstReply : laterReply);
        if (hangsUp)
            socket.disconnectFromHost();
    }
    void showProgress(std::uint64_t received, std::uint64_t total) override
    {
        shown = std::to_string(received) + " of " + std::to_string(total);
    }
    bool stopRequested() override { return stops; }

    // `content`: what lies there afterwards, the old file or the new one.
    void expectFetched(DownloadEnd end, const std::string& content, std::optional<Text> address = {})
    {
        const auto own = QStringLiteral("http://127.0.0.1:%1/KarvoUpd.zip").arg(server.serverPort());
        requests = 0;
        EXPECT_EQ(QtDownloader(wait, limits).fetch(address.value_or(toText(own)), old, *this), end);
        EXPECT_EQ(scratch.listing(), "KarvoUpd.zip ") << "nothing beside it";
        EXPECT_EQ(scratch.read("KarvoUpd.zip"), content);
        scratch.write("KarvoUpd.zip", "old");
    }

    test::ScratchFolder scratch;
    std::filesystem::path old = scratch.write("KarvoUpd.zip", "old");
    QtWait wait;
    QTcpServer server;
    QByteArray firstReply, laterReply;
    bool hangsUp = true;
    int requests = 0;
    bool stops = false;
    std::string shown;
    DownloadLimits limits{.silence = 5s, .total = 10s, .bytes = 1000, .redirects = 2};
};

// Whether a reply in chunks was cut off the archive itself has to tell; what is packed for the way is
// unpacked.
TEST_F(QtDownloaderTest, ReplacesTheFileOnlyByWhatHasComeWhole)
{
    const auto made = makeZip({{"a.txt", "some text"}});
    const QByteArray zip(made.data(), static_cast<qsizetype>(made.size()));
    const QByteArray deflated = qCompress(zip).mid(4); // without the length in front
    const QByteArray deflate = "Content-Encoding: deflate\r\n";
    const struct {
        const char* what;
        QByteArray reply;
        std::string content = "old"; // afterwards
    } cases[] = {
        {"chunks", chunked(zip, "0\r\n\r\n"), made},
        {"chunks cut inside", chunked(zip.left(zip.size() / 2), "")},
        {"chunks cut before the last byte", chunked(zip.chopped(1), "")},
        {"chunks of something else", chunked("text", "0\r\n\r\n")},
        {"no length", ok + "\r\n" + zip, made},
        {"packed", reply(deflated, deflate), made},
        {"packed, cut", reply(deflated.left(deflated.size() / 2), deflate)},
        {"cut", ok + "Content-Length: 8\r\n\r\nhalf"},
        {"hung up at once", {}},
        {"longer than told", ok + "Content-Length: 3\r\n\r\nfar too much", "far"},
        {"not found", "HTTP/1.1 404 Not Found\r\nContent-Length: 5\r\n\r\nsorry"},
        {"too large", reply(QByteArray(1001, 'x'))},
        {"told to be too large", ok + "Content-Length: 999999999999\r\n\r\nx"},
        {"empty", reply({})},
        {"a page", reply("\xEF\xBB\xBF \n<!DOCTYPE HTML><title>Log in</title>")},
        {"told to be a page", reply("hi", "Content-Type: text/html; charset=utf-8\r\n")},
        {"no web server", "hello"},
        {"redirected to a file", redirection("file:///etc/hostname")},
        {"redirected without end", redirection("/again")},
    };
    for (const auto& [what, sent, content] : cases) {
        SCOPED_TRACE(what);
        firstReply = laterReply = sent;
        expectFetched(content == "old" ? DownloadEnd::failed : DownloadEnd::complete, content);
    }
    firstReply = redirection("/other");
    laterReply = reply("new content");
    expectFetched(DownloadEnd::complete, "new content");
    EXPECT_EQ(shown, "11 of 11");
}

TEST_F(QtDownloaderTest, EndsWhereNothingComesAndWhenAskedTo)
{
    for (const TextView address : {u"", u"KarvoUpd.zip", u"file:///etc/hostname", u"ftp://127.0.0.1/a.zip",
                                   u"http:///a.zip", u"http://127.0.0.1:1/a.zip"})
        expectFetched(DownloadEnd::failed, "old", Text(address));
    firstReply = ok + "Content-Length: 8\r\n\r\nhalf";
    hangsUp = false;
    stops = true;
    expectFetched(DownloadEnd::cancelled, "old");
    stops = false;
    limits.silence = 200ms;
    expectFetched(DownloadEnd::failed, "old");
    limits.silence = 5s;
    limits.total = 200ms; // bytes that keep trickling in are no silence
    expectFetched(DownloadEnd::failed, "old");
    wait.endProgram();
    expectFetched(DownloadEnd::ended, "old");
    old = scratch.path() / "missing/x";
    EXPECT_EQ(QtDownloader(wait).fetch(u"http://127.0.0.1/a.zip", old, *this), DownloadEnd::failed);
}

// What is handed over, "name:kind:content" in each line, and the words at the end.
struct Listing : ArchiveSink {
    explicit Listing(const std::string& content, int stopAt = 0) : left(stopAt)
    {
        words = ZipArchive().read(scratch.write("a.zip", content), *this);
    }
    bool takeEntry(const ArchiveEntry& entry) override
    {
        const char* const kinds[] = {":file:", ":folder:", ":other:"};
        text += "\n" + entry.name + (entry.encrypted ? ":secret" : "") + kinds[static_cast<int>(entry.kind)];
        return --left != 0;
    }
    bool takeBytes(std::span<const std::uint8_t> bytes) override
    {
        text.append(bytes.begin(), bytes.end());
        return true;
    }

    test::ScratchFolder scratch;
    int left; // entries, until it ends the reading
    std::string text;
    std::optional<Text> words;
};

TEST(ZipArchive, HandsOverEachEntryWithItsContent)
{
    const std::string zip =
        makeZip({{"docs/", {}, Kind::folder}, {"docs/a.txt", "some text"}, {"Größe", ""}});
    const Listing all(zip);
    EXPECT_EQ(all.text, "\ndocs/:folder:\ndocs/a.txt:file:some text\nGröße:file:");
    EXPECT_FALSE(all.words);
    const Listing two(zip, 2);
    EXPECT_EQ(two.text, "\ndocs/:folder:\ndocs/a.txt:file:");
    EXPECT_FALSE(two.words) << "the sink ended it";
    EXPECT_EQ(Listing(makeZip({{"link", "/etc/passwd", Kind::other}})).text, "\nlink:other:");
    const auto secret = makeZip({{"secret", "text"}}, "zip:encryption=traditional");
    EXPECT_EQ(Listing(secret, 1).text, "\nsecret:secret:file:");
}

TEST(ZipArchive, NamesAreWhatTheyWereMeantToBe)
{
    // Marked as UTF-8; the marked lines and letters of the last two would be an umlaut in unmarked bytes.
    std::string zip = makeZip(
        {{"Größe", ""}, {"Жук 文", ""}, {"\xE2\x94\x9C\xC3\xB1", ""}, {"1234567", ""}, {"abcde", ""}});
    for (const auto& [plain, bytes] : {std::pair<std::string, std::string>{"1234567", "Gr\xC3\xB6\xC3\x9F"
                                                                                      "e"},
                                       {"abcde", "Gr\x94\xE1"
                                                 "e"}})
        for (auto at = zip.find(plain); at != std::string::npos; at = zip.find(plain))
            zip.replace(at, plain.size(), bytes);
    EXPECT_EQ(Listing(zip).text, "\nGröße:file:\nЖук 文:file:\n├ñ:file:\nGröße:file:\nGröße:file:");
}

TEST(ZipArchive, WhatIsCutOrSpoiltIsNotWhole)
{
    std::string zip =
        makeZip({{"a.txt", std::string(5000, 'a')}, {"b.txt", "text of b"}}, "zip:compression=store");
    Listing whole(zip);
    EXPECT_FALSE(whole.words);
    for (const std::size_t length :
         {std::size_t{0}, std::size_t{100}, std::size_t{3000}, zip.find("PK\x01\x02"), zip.size() - 1})
        EXPECT_TRUE(Listing(zip.substr(0, length)).words) << length;
    zip[2000] = 'b';
    const auto words = Listing(zip).words;
    EXPECT_TRUE(words && words->find(u"CRC") != Text::npos);
    EXPECT_TRUE(ZipArchive().read(whole.scratch.path() / "missing.zip", whole));
    EXPECT_TRUE(ZipArchive().read(whole.scratch.path(), whole)) << "a folder";
}

} // namespace
} // namespace karvo
