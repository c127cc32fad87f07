#include "shell/program_version.h"

namespace karvo
{

const TextView programVersion = u"" KARVO_VERSION_NAME;

} // namespace karvo
