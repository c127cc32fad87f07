#include "cli/file_output.h"

#include "cli/list_output.h"
#include "cli/terminal.h"
#include "platform/text_conversion.h"
#include "program/path_text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace karvo
{

namespace
{

QLatin1StringView wordOf(Likeness likeness)
{
    switch (likeness) {
    case Likeness::different:
        return QLatin1StringView("different");
    case Likeness::onlyFirst:
        return QLatin1StringView("onlyFirst");
    case Likeness::onlySecond:
        return QLatin1StringView("onlySecond");
    case Likeness::equal:
        break;
    }
    return QLatin1StringView("equal");
}

QJsonObject objectOf(const Comparison& comparison)
{
    QJsonArray lines;
    for (const ComparisonLine& line : comparison.lines)
        lines.append(QJsonObject{{QStringLiteral("cv"), line.cv},
                                 {QStringLiteral("label"), toQString(line.label)},
                                 {QStringLiteral("first"), numberOrNull(line.firstValue)},
                                 {QStringLiteral("second"), numberOrNull(line.secondValue)},
                                 {QStringLiteral("result"), wordOf(line.likeness)},
                                 {QStringLiteral("name"), toQString(line.name)}});
    return {{QStringLiteral("first"), toQString(comparison.firstName)},
            {QStringLiteral("second"), toQString(comparison.secondName)},
            {QStringLiteral("equal"), comparison.equal},
            {QStringLiteral("different"), comparison.different},
            {QStringLiteral("onlyFirst"), comparison.onlyFirst},
            {QStringLiteral("onlySecond"), comparison.onlySecond},
            {QStringLiteral("lines"), lines}};
}

QJsonObject objectOf(const BatchFile& file, const LanguageTables& texts)
{
    QJsonArray rows;
    for (const BatchRow& row : file.rows) {
        QJsonObject object{{QStringLiteral("cv"), row.cv},
                           {QStringLiteral("old"), numberOrNull(row.oldValue)},
                           {QStringLiteral("new"), row.newValue}};
        if (row.refusal != BatchRefusal::none)
            object.insert(QStringLiteral("refused"), toQString(refusalText(row, texts)));
        rows.append(object);
    }
    QJsonObject object{{QStringLiteral("file"), pathToQString(file.path)},
                       {QStringLiteral("done"), file.done},
                       {QStringLiteral("cvs"), rows}};
    if (file.refusal != BatchRefusal::none)
        object.insert(QStringLiteral("refused"), toQString(refusalText(file, texts)));
    return object;
}

void printFile(const BatchFile& file, const LanguageTables& texts)
{
    const Text start = pathText(file.path) + u": ";
    if (file.refusal != BatchRefusal::none) {
        printLine(stdout, start + refusalText(file, texts));
        return;
    }
    for (const BatchRow& row : file.rows) {
        // Of a file that is refused none of the changes is made.
        if (file.isRefused() && row.refusal == BatchRefusal::none)
            continue;
        const Text change = u"CV" + textFromNumber(row.cv) + u" " +
                            (row.oldValue.empty() ? Text(u"---") : row.oldValue) + u" -> " +
                            textFromNumber(row.newValue);
        printLine(stdout, start + (row.refusal == BatchRefusal::none ? change : refusalText(row, texts)));
    }
}

} // namespace

void printComparison(const Comparison& comparison, const LanguageTables& texts, bool json)
{
    if (json) {
        printJson(QJsonDocument(objectOf(comparison)));
        return;
    }
    printLine(stdout, comparison.firstName);
    printLine(stdout, comparison.secondName);
    for (const ComparisonLine& line : comparison.lines) {
        if (line.likeness != Likeness::equal)
            printLine(stdout, line.text() + u"\t" + likenessText(line.likeness, texts) + u"\t" + line.name);
    }
    printLine(stdout, countsText(comparison, texts));
}

void printBatch(const std::vector<BatchFile>& batch, const LanguageTables& texts, bool json)
{
    QJsonArray array;
    for (const BatchFile& file : batch) {
        if (json)
            array.append(objectOf(file, texts));
        else
            printFile(file, texts);
    }
    if (json)
        printJson(QJsonDocument(array));
}

} // namespace karvo
