// Words for programs that read the JSON: they never change and are in no language.
#pragma once

#include "cvdata/batch_change.h"
#include "cvdata/comparison.h"
#include "firmware/interface_update.h"
#include "firmware/unzip.h"
#include "firmware/upload.h"
#include "workbench/write_report.h"

#include <QString>

namespace karvo
{

QLatin1StringView wordOf(Likeness likeness);
QLatin1StringView wordOf(BatchRefusal refusal);
QLatin1StringView wordOf(WriteSkip skip);
QLatin1StringView wordOf(WriteEnd end);
QLatin1StringView wordOf(WriteManyEnd end);
QLatin1StringView wordOf(UploadEnd end);
QLatin1StringView wordOf(UpdateEnd end);
QLatin1StringView wordOf(UnzipEnd end);

} // namespace karvo
