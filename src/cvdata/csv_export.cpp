#include "cvdata/csv_export.h"

#include "program/text_lines.h"

namespace karvo
{

Bytes csvExport(const CvTable& table, CsvForm form)
{
    std::vector<Text> lines = {u"CV-Nummer;CV-Wert;CV-Text"};
    if (form == CsvForm::closedHeader)
        lines.front() += u";";
    for (const int cv : table.describedCvs())
        lines.push_back(textFromNumber(cv) + u";" + table.at(cv, Column::value) + u";" +
                        csvField(table.at(cv, Column::text)));
    return contentOfLines(lines);
}

Text csvField(TextView text)
{
    Text field;
    for (const char16_t character : text) {
        if (character == u'\n')
            field += u' ';
        else if (character != u'\r')
            field += character == u';' ? u',' : character;
    }
    return field;
}

} // namespace karvo
