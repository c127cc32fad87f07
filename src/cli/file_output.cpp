#include "cli/file_output.h"

#include "cli/list_output.h"
#include "cli/stable_words.h"
#include "platform/text_conversion.h"
#include "program/path_text.h"

#include <QJsonArray>
#include <QJsonObject>

namespace karvo
{

namespace
{

QJsonArray linesOf(const Comparison& comparison)
{
    QJsonArray lines;
    for (const ComparisonLine& line : comparison.lines)
        lines.append(QJsonObject{{QStringLiteral("cv"), line.cv},
                                 {QStringLiteral("label"), toQString(line.label)},
                                 {QStringLiteral("first"), numberOrNull(line.firstValue)},
                                 {QStringLiteral("second"), numberOrNull(line.secondValue)},
                                 {QStringLiteral("result"), wordOf(line.likeness)},
                                 {QStringLiteral("name"), toQString(line.name)}});
    return lines;
}

template <typename Refused>
void addRefusal(QJsonObject& object, const Refused& refused, const LanguageTables& texts)
{
    if (refused.refusal == BatchRefusal::none)
        return;
    object.insert(QStringLiteral("refused"), toQString(refusalText(refused, texts)));
    object.insert(QStringLiteral("code"), wordOf(refused.refusal));
}

QJsonObject objectOf(const BatchFile& file, const LanguageTables& texts)
{
    QJsonArray rows;
    for (const BatchRow& row : file.rows) {
        QJsonObject object{{QStringLiteral("cv"), row.cv},
                           {QStringLiteral("old"), numberOrNull(row.oldValue)},
                           {QStringLiteral("new"), row.newValue}};
        addRefusal(object, row, texts);
        rows.append(object);
    }
    QJsonObject object{{QStringLiteral("file"), pathToQString(file.path)},
                       {QStringLiteral("done"), file.done},
                       {QStringLiteral("cvs"), rows}};
    addRefusal(object, file, texts);
    return object;
}

// Of a file that is refused none of the changes is made.
void printFile(Output& output, const BatchFile& file, const LanguageTables& texts)
{
    const Text start = pathText(file.path) + u": ";
    if (file.refusal != BatchRefusal::none) {
        output.say(start + refusalText(file, texts));
        return;
    }
    for (const BatchRow& row : file.rows) {
        const Text old = row.oldValue.empty() ? Text(u"---") : row.oldValue;
        if (row.refusal != BatchRefusal::none)
            output.say(start + refusalText(row, texts));
        else if (!file.isRefused())
            output.line(Text(start).append(u"CV" + textFromNumber(row.cv) + u" ").append(old) + u" -> " +
                        textFromNumber(row.newValue));
    }
}

} // namespace

void printComparison(Output& output, const Comparison& comparison, const LanguageTables& texts)
{
    output.put(QStringLiteral("first"), toQString(comparison.firstName));
    output.put(QStringLiteral("second"), toQString(comparison.secondName));
    output.put(QStringLiteral("equal"), comparison.equal);
    output.put(QStringLiteral("different"), comparison.different);
    output.put(QStringLiteral("onlyFirst"), comparison.onlyFirst);
    output.put(QStringLiteral("onlySecond"), comparison.onlySecond);
    output.put(QStringLiteral("lines"), linesOf(comparison));
    output.line(comparison.firstName);
    output.line(comparison.secondName);
    for (const ComparisonLine& line : comparison.lines) {
        if (line.likeness != Likeness::equal)
            output.line(line.text() + u"\t" + likenessText(line.likeness, texts) + u"\t" + line.name);
    }
    output.line(countsText(comparison, texts));
}

void printBatch(Output& output, const std::vector<BatchFile>& batch, const LanguageTables& texts)
{
    QJsonArray files;
    for (const BatchFile& file : batch) {
        files.append(objectOf(file, texts));
        printFile(output, file, texts);
    }
    output.put(QStringLiteral("files"), files);
}

} // namespace karvo
