#include "platform/system_stay_awake.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QThread>

namespace karvo
{
namespace
{

// Stands for the system's: writes down how it was called, and does as it is told until that ends.
constexpr const char* script = "#!/bin/sh\n"
                               "echo \"$@\" > \"${0%/*}/called\"\n"
                               "shift 3; \"$@\"\n"
                               "echo ended >> \"${0%/*}/called\"\n";

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(SystemStayAwake, HoldsTheSystemsLockFromBeginToEnd)
{
    const QTemporaryDir folder;
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", folder.path().toLocal8Bit() + ':' + path);
    QFile program(folder.filePath(QStringLiteral("systemd-inhibit")));
    ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    program.write(script);
    program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    program.close();

    SystemStayAwake awake;
    const QString called = folder.filePath(QStringLiteral("called"));
    awake.begin(u"writing");
    for (int i = 0; i < 200 && contentOf(called).isEmpty(); ++i)
        QThread::msleep(20);
    EXPECT_EQ(contentOf(called), "--what=sleep:idle --who=Karvo --why=writing cat\n");
    awake.end();
    EXPECT_TRUE(contentOf(called).endsWith("cat\nended\n"));

    qputenv("PATH", folder.filePath(QStringLiteral("none")).toLocal8Bit());
    awake.begin(u"without the program nothing happens");
    awake.end();
    qputenv("PATH", path);
}

} // namespace
} // namespace karvo
