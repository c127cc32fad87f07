#include "platform/system_stay_awake.h"

#include "support/scratch_folder.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QThread>

namespace karvo
{

TEST(SystemStayAwake, HoldsTheSystemsLockFromBeginToEnd)
{
    const test::ScratchFolder folder;
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QByteArray(folder.path().c_str()) + ':' + path);
    // Stands for the system's: writes down how it was called, and does as it is told until that ends.
    const auto program = folder.write("systemd-inhibit", "#!/bin/sh\n"
                                                         "echo \"$@\" > \"${0%/*}/called\"\n"
                                                         "shift 3; \"$@\"\n"
                                                         "echo ended >> \"${0%/*}/called\"\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    folder.write("called", "");

    SystemStayAwake awake;
    awake.begin(u"writing");
    for (int i = 0; i < 200 && folder.read("called").empty(); ++i)
        QThread::msleep(20);
    EXPECT_EQ(folder.read("called"), "--what=sleep:idle --who=Karvo --why=writing cat\n");
    awake.end();
    EXPECT_TRUE(folder.read("called").ends_with("cat\nended\n"));

    qputenv("PATH", QByteArray(folder.path().c_str()) + "/none");
    awake.begin(u"without the program nothing happens");
    awake.end();
    qputenv("PATH", path);
}

} // namespace karvo
