#include "cli/output.h"

#include "platform/console.h"
#include "platform/text_conversion.h"

#include <QJsonDocument>

#include <algorithm>
#include <string>

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

// The first one tells why.
void Output::note(const std::error_code& error)
{
    if (!failure_)
        failure_ = error;
}

void Output::line(TextView text)
{
    if (!isJson())
        note(print(StandardStream::out, utf8FromText(withPlainLineEnds(text)) + "\n"));
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
    note(flushOutput()); // what was printed before stands before it on a terminal too
    print(StandardStream::err, utf8FromText(withPlainLineEnds(text)) + "\n");
}

void Output::showPercent(std::optional<std::size_t> percent)
{
    if (percent == percent_)
        return;
    constexpr std::size_t width = 3;
    std::string number = std::to_string(percent.value_or(0));
    number.insert(0, width - std::min(width, number.size()), ' ');
    print(StandardStream::err, percent ? "\r" + number + " %" : "\n");
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
    note(print(StandardStream::out, QJsonDocument(result_).toJson(QJsonDocument::Indented).toStdString()));
}

std::error_code Output::failure()
{
    note(flushOutput());
    return failure_;
}

} // namespace karvo
