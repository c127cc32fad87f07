// What a command prints: its result on standard output, as lines or as one JSON object, and everything else
// on standard error.
#pragma once

#include "cli/exit_code.h"
#include "program/text.h"

#include <QJsonObject>

#include <optional>
#include <system_error>

namespace karvo
{

class Output
{
public:
    enum class Form { lines, json };

    explicit Output(Form form) : form_(form) {}

    bool isJson() const { return form_ == Form::json; }

    // A line of the result, or several; nothing where JSON is printed.
    void line(TextView text);

    // A member of the result; nothing where lines are printed.
    void put(const QString& name, const QJsonValue& value);

    // To standard error, as the next two; what is wrong or worth knowing, so that it stands in the JSON too.
    void say(const Text& text);

    // What is under way.
    void remark(const Text& text);

    // On a line of its own, each per cent once; without a number the line ends. `percent` is 0 to 100.
    void showPercent(std::optional<std::size_t> percent);

    // Prints the JSON object. A command that was not done has in it: {"error": {"code": "noReply", "exit": 4,
    // "message": "..."}}; any other what was said on the way, if anything. `meaning`: stands for the message
    // where nothing was said.
    void finish(ExitCode code, const Text& meaning);

    // Why standard output has not taken everything; no error when it has.
    std::error_code failure();

private:
    void note(const std::error_code& error);

    Form form_;
    QJsonObject result_;
    Text said_;
    std::optional<std::size_t> percent_; // on the line under way
    std::error_code failure_;
};

} // namespace karvo
