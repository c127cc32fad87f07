#include "cli/output.h"

#include "platform/text_conversion.h"

#include <QJsonDocument>

#include <cerrno>
#include <cstdio>
#include <system_error>

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace karvo
{

namespace
{

// A box's lines as lines of a terminal.
Text withPlainLineEnds(TextView text)
{
    Text plain;
    for (const char16_t character : text) {
        if (character != u'\r')
            plain += character;
    }
    return plain;
}

} // namespace

void Output::print(const std::string& bytes)
{
    errno = 0;
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size())
        noteError();
}

void Output::flush()
{
    errno = 0;
    if (std::fflush(stdout) != 0)
        noteError();
}

// The first one tells why.
void Output::noteError()
{
    if (error_ == 0)
        error_ = errno != 0 ? errno : EIO;
}

void Output::line(TextView text)
{
    if (!isJson())
        print(utf8FromText(withPlainLineEnds(text)) + "\n");
}

void Output::put(const QString& name, const QJsonValue& value)
{
    if (isJson())
        result_.insert(name, value);
}

void Output::say(const Text& text)
{
    const Text plain = withPlainLineEnds(text);
    said_ += (said_.empty() ? Text() : u"\n") + plain;
    remark(plain);
}

void Output::remark(const Text& text)
{
    showPercent(std::nullopt);
    flush(); // what was printed before stands before it on a terminal too
    std::fputs((utf8FromText(withPlainLineEnds(text)) + "\n").c_str(), stderr);
}

void Output::showPercent(std::optional<std::size_t> percent)
{
    if (percent == percent_)
        return;
    if (percent)
        std::fprintf(stderr, "\r%3zu %%", *percent);
    else
        std::fputs("\n", stderr);
    percent_ = percent;
}

void Output::finish(ExitCode code, const Text& meaning)
{
    showPercent(std::nullopt);
    if (!isJson())
        return;
    const QString message = toQString(said_.empty() ? meaning : said_);
    if (!isSuccess(code))
        put(QStringLiteral("error"),
            QJsonObject{{QStringLiteral("code"), toQString(textFromUtf8(exitWord(code)))},
                        {QStringLiteral("exit"), exitNumber(code)},
                        {QStringLiteral("message"), message}});
    else if (!said_.empty())
        put(QStringLiteral("notes"), message);
    print(QJsonDocument(result_).toJson(QJsonDocument::Indented).toStdString());
}

std::optional<Text> Output::failure()
{
    flush();
    if (error_ == 0)
        return std::nullopt;
    return textFromUtf8(std::generic_category().message(error_));
}

void holdStandardStreams()
{
#ifndef _WIN32
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        const bool isClosed = fcntl(stream, F_GETFD) == -1 && errno == EBADF;
        // Only to be read: what is printed to it fails, as it would have.
        if (isClosed && open("/dev/null", O_RDONLY) != stream)
            return;
    }
#endif
}

} // namespace karvo
