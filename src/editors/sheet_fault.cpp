// Why a file is no function sheet, in words.
#include "editors/sheet_file.h"

namespace karvo
{

namespace
{

using Kind = SheetFault::Kind;

Message messageOf(Kind kind)
{
    switch (kind) {
    case Kind::noSheet:
        return Message::sheetNoSheet;
    case Kind::unknownWord:
        return Message::sheetUnknownWord;
    case Kind::wrongName:
        return Message::sheetWrongName;
    case Kind::wrongNumber:
        return Message::sheetWrongNumber;
    case Kind::wrongValues:
        return Message::sheetWrongValues;
    case Kind::unknownModel:
        return Message::sheetUnknownModel;
    case Kind::unknownLanguage:
        return Message::sheetUnknownLanguage;
    case Kind::emptyText:
        return Message::sheetEmptyText;
    case Kind::misplaced:
        return Message::sheetMisplaced;
    case Kind::repeated:
        return Message::sheetRepeated;
    case Kind::tooLong:
        return Message::sheetTooLong;
    case Kind::noTitle:
        return Message::sheetNoTitle;
    case Kind::nothingInIt:
        break;
    }
    return Message::sheetNothingInIt;
}

} // namespace

Text faultText(const SheetFault& fault, const LanguageTables& texts)
{
    return texts.message(Message::sheetLine,
                         {textFromNumber(fault.line), texts.message(messageOf(fault.kind), {fault.word})});
}

} // namespace karvo
