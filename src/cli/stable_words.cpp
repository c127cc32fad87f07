#include "cli/stable_words.h"

namespace karvo
{

QLatin1StringView wordOf(Likeness likeness)
{
    switch (likeness) {
    case Likeness::equal:
        return QLatin1StringView("equal");
    case Likeness::different:
        return QLatin1StringView("different");
    case Likeness::onlyFirst:
        return QLatin1StringView("onlyFirst");
    case Likeness::onlySecond:
        return QLatin1StringView("onlySecond");
    }
    return {};
}

QLatin1StringView wordOf(BatchRefusal refusal)
{
    switch (refusal) {
    case BatchRefusal::none:
        return QLatin1StringView("none");
    case BatchRefusal::notInList:
        return QLatin1StringView("notInList");
    case BatchRefusal::outsideLimits:
        return QLatin1StringView("outsideLimits");
    case BatchRefusal::cannotRead:
        return QLatin1StringView("cannotRead");
    case BatchRefusal::tooLarge:
        return QLatin1StringView("tooLarge");
    case BatchRefusal::notAList:
        return QLatin1StringView("notAList");
    case BatchRefusal::changedMeanwhile:
        return QLatin1StringView("changedMeanwhile");
    case BatchRefusal::cannotSave:
        return QLatin1StringView("cannotSave");
    }
    return {};
}

QLatin1StringView wordOf(WriteSkip skip)
{
    switch (skip) {
    case WriteSkip::none:
        return QLatin1StringView("none");
    case WriteSkip::notUsed:
        return QLatin1StringView("notUsed");
    case WriteSkip::decodersOwn:
        return QLatin1StringView("decodersOwn");
    case WriteSkip::reset:
        return QLatin1StringView("reset");
    case WriteSkip::outsideLimits:
        return QLatin1StringView("outsideLimits");
    case WriteSkip::otherSteps:
        return QLatin1StringView("otherSteps");
    case WriteSkip::addressUnconfirmed:
        return QLatin1StringView("addressUnconfirmed");
    case WriteSkip::withSeries:
        return QLatin1StringView("withSeries");
    case WriteSkip::unticked:
        return QLatin1StringView("unticked");
    }
    return {};
}

QLatin1StringView wordOf(WriteEnd end)
{
    switch (end) {
    case WriteEnd::written:
        return QLatin1StringView("written");
    case WriteEnd::unconfirmed:
        return QLatin1StringView("unconfirmed");
    case WriteEnd::refusedByUser:
        return QLatin1StringView("refusedByUser");
    case WriteEnd::guarded:
        return QLatin1StringView("guarded");
    case WriteEnd::noReply:
        return QLatin1StringView("noReply");
    case WriteEnd::unacknowledged:
        return QLatin1StringView("unacknowledged");
    case WriteEnd::unknownDecoder:
        return QLatin1StringView("unknownDecoder");
    case WriteEnd::otherDecoder:
        return QLatin1StringView("otherDecoder");
    case WriteEnd::commandRefused:
        return QLatin1StringView("commandRefused");
    case WriteEnd::frameRefused:
        return QLatin1StringView("frameRefused");
    case WriteEnd::ended:
        return QLatin1StringView("ended");
    }
    return {};
}

QLatin1StringView wordOf(WriteManyEnd end)
{
    switch (end) {
    case WriteManyEnd::finished:
        return QLatin1StringView("finished");
    case WriteManyEnd::stoppedByUser:
        return QLatin1StringView("stoppedByUser");
    case WriteManyEnd::stoppedByFault:
        return QLatin1StringView("stoppedByFault");
    case WriteManyEnd::nothingToWrite:
        return QLatin1StringView("nothingToWrite");
    case WriteManyEnd::busy:
        return QLatin1StringView("busy");
    case WriteManyEnd::cancelled:
        return QLatin1StringView("cancelled");
    case WriteManyEnd::declined:
        return QLatin1StringView("declined");
    case WriteManyEnd::otherModel:
        return QLatin1StringView("otherModel");
    case WriteManyEnd::backupFailed:
        return QLatin1StringView("backupFailed");
    case WriteManyEnd::noReply:
        return QLatin1StringView("noReply");
    case WriteManyEnd::unknownDecoder:
        return QLatin1StringView("unknownDecoder");
    case WriteManyEnd::wrongCheckByte:
        return QLatin1StringView("wrongCheckByte");
    case WriteManyEnd::ended:
        return QLatin1StringView("ended");
    }
    return {};
}

QLatin1StringView wordOf(UploadEnd end)
{
    switch (end) {
    case UploadEnd::sent:
        return QLatin1StringView("sent");
    case UploadEnd::stopped:
        return QLatin1StringView("stopped");
    case UploadEnd::lineLost:
        return QLatin1StringView("lineLost");
    case UploadEnd::portRefused:
        return QLatin1StringView("portRefused");
    case UploadEnd::lineBusy:
        return QLatin1StringView("lineBusy");
    case UploadEnd::ended:
        return QLatin1StringView("ended");
    }
    return {};
}

QLatin1StringView wordOf(UpdateEnd end)
{
    switch (end) {
    case UpdateEnd::sent:
        return QLatin1StringView("sent");
    case UpdateEnd::notConfirmed:
        return QLatin1StringView("notConfirmed");
    case UpdateEnd::notAnswered:
        return QLatin1StringView("notAnswered");
    case UpdateEnd::noFile:
        return QLatin1StringView("noFile");
    case UpdateEnd::portRefused:
        return QLatin1StringView("portRefused");
    case UpdateEnd::noReply:
        return QLatin1StringView("noReply");
    case UpdateEnd::wrongModel:
        return QLatin1StringView("wrongModel");
    case UpdateEnd::declined:
        return QLatin1StringView("declined");
    case UpdateEnd::brokenOff:
        return QLatin1StringView("brokenOff");
    case UpdateEnd::stopped:
        return QLatin1StringView("stopped");
    case UpdateEnd::lineBusy:
        return QLatin1StringView("lineBusy");
    case UpdateEnd::ended:
        return QLatin1StringView("ended");
    }
    return {};
}

QLatin1StringView wordOf(UnzipEnd end)
{
    switch (end) {
    case UnzipEnd::unpacked:
        return QLatin1StringView("unpacked");
    case UnzipEnd::stopped:
        return QLatin1StringView("stopped");
    case UnzipEnd::missing:
        return QLatin1StringView("missing");
    case UnzipEnd::empty:
        return QLatin1StringView("empty");
    case UnzipEnd::notReadable:
        return QLatin1StringView("notReadable");
    case UnzipEnd::nameRefused:
        return QLatin1StringView("nameRefused");
    case UnzipEnd::linkRefused:
        return QLatin1StringView("linkRefused");
    case UnzipEnd::encrypted:
        return QLatin1StringView("encrypted");
    case UnzipEnd::tooMany:
        return QLatin1StringView("tooMany");
    case UnzipEnd::tooLarge:
        return QLatin1StringView("tooLarge");
    case UnzipEnd::notPlaced:
        return QLatin1StringView("notPlaced");
    }
    return {};
}

} // namespace karvo
