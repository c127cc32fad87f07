#include "workbench/decoder_info.h"

#include "program/path_text.h"

namespace karvo
{

namespace
{

Text modelLine(Model model)
{
    if (model == Model::xtModule)
        return u"XT-Modul";
    return u"Decoder = " + Text(modelName(model));
}

Text messageLines(const LanguageTables& texts, Message first, Message last)
{
    Text lines;
    for (int number = static_cast<int>(first); number <= static_cast<int>(last); ++number) {
        if (!lines.empty())
            lines += lineBreak;
        lines += texts.message(static_cast<Message>(number));
    }
    return lines;
}

} // namespace

Text decoderInfoText(const ProgramState& state)
{
    const CvSet& set = state.set;
    if (set.isEmpty())
        return {};
    const Text end(lineBreak);
    const LanguageTables& texts = state.texts;
    return modelLine(set.profile.model) + end + texts.message(Message::processorLabel) + u" = " +
           Text(processorName(set.profile.processor)) + end + texts.message(Message::descriptionFileLabel) +
           u" = " + pathText(set.descriptionPath) + end + texts.message(Message::expertFileLabel) + u" = " +
           pathText(set.expertPath);
}

Text helpText(const LanguageTables& texts)
{
    return messageLines(texts, Message::helpFirst, Message::helpLast);
}

Text moduleHelpText(const LanguageTables& texts)
{
    return messageLines(texts, Message::moduleHelpFirst, Message::moduleHelpLast);
}

} // namespace karvo
