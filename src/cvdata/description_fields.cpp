#include "cvdata/description_fields.h"

namespace karvo
{

Text withLineBreaks(TextView field)
{
    Text text(field);
    for (auto at = text.find(u'$'); at != Text::npos; at = text.find(u'$', at + lineBreak.size()))
        text.replace(at, 1, lineBreak);
    return text;
}

std::vector<TextView> fieldsOf(TextView line)
{
    std::vector<TextView> fields;
    for (auto end = line.find(u';'); end != TextView::npos; end = line.find(u';')) {
        fields.push_back(line.substr(0, end));
        line.remove_prefix(end + 1);
    }
    return fields;
}

} // namespace karvo
