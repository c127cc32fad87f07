#include "firmware/file_fault.h"

#include "program/path_text.h"

namespace karvo
{

namespace
{

Caption reasonOf(FileFault fault)
{
    switch (fault) {
    case FileFault::otherFirstLine:
    case FileFault::lineForm:
        return Caption::hexLineForm;
    case FileFault::lineLength:
        return Caption::hexLineLength;
    case FileFault::lineSum:
        return Caption::hexLineSum;
    case FileFault::lineType:
        return Caption::hexLineType;
    case FileFault::imageLineType:
        return Caption::imageLineType;
    case FileFault::overlap:
        return Caption::hexOverlap;
    case FileFault::gap:
        return Caption::hexGap;
    case FileFault::tooManyLines:
        return Caption::hexTooManyLines;
    case FileFault::tooLarge:
        return Caption::hexTooLarge;
    case FileFault::endMissing:
        return Caption::hexEndMissing;
    case FileFault::linesBehindEnd:
        return Caption::hexLinesBehindEnd;
    case FileFault::noData:
        return Caption::firmwareFileEmpty;
    case FileFault::headerTooLong:
        return Caption::updateHeaderTooLong;
    case FileFault::headerOpen:
        return Caption::updateHeaderOpen;
    case FileFault::headerStart:
        return Caption::updateHeaderStart;
    case FileFault::recordForm:
        return Caption::updateRecordForm;
    case FileFault::recordTooLong:
        break;
    }
    return Caption::updateRecordTooLong;
}

} // namespace

Text refusalText(const LanguageTables& texts, const std::filesystem::path& path, const FileRefusal& refusal,
                 Message meaning)
{
    return texts.message(
        meaning, {pathText(path), textFromNumber(refusal.line), texts.caption(reasonOf(refusal.fault))});
}

} // namespace karvo
