// The far end of a real line, led by a test: see far_end.py. On Unix it is started here. A test for Windows
// runs where no pseudo terminals are: KARVO_FAR_END has the number of its port, and the device of COM5 is
// what it was told to lay a link to.
#pragma once

#include "support/scratch_folder.h"

#include <QHostAddress>
#include <QProcess>
#include <QTcpSocket>

namespace karvo::test
{

class FarEnd
{
public:
    FarEnd()
    {
        const QByteArray port = portNumber();
        if (port.isEmpty())
            return;
        lead_.connectToHost(QHostAddress::LocalHost, port.toUShort());
        EXPECT_TRUE(lead_.waitForConnected(patienceMs)) << "no far end";
    }
    ~FarEnd()
    {
        process_.kill();
        process_.waitForFinished();
    }
    FarEnd(const FarEnd&) = delete;
    FarEnd& operator=(const FarEnd&) = delete;

    bool isThere() const { return lead_.state() == QTcpSocket::ConnectedState; }

#ifdef Q_OS_WIN
    QString device() const
    {
        return QStringLiteral("COM5");
    }
#else
    QString device() const
    {
        return QString::fromStdString((scratch_.path() / "device").string());
    }
#endif

    QByteArray ask(const QByteArray& command)
    {
        lead_.write(command + '\n');
        while (!lead_.canReadLine() && lead_.waitForReadyRead(patienceMs))
            ;
        return lead_.readLine().trimmed();
    }

private:
    static constexpr int patienceMs = 5000;

#ifdef Q_OS_WIN
    static QByteArray portNumber()
    {
        return qgetenv("KARVO_FAR_END");
    }
#else
    QByteArray portNumber()
    {
        process_.start(QStringLiteral("python3"),
                       {QStringLiteral("-B"), QStringLiteral(KARVO_SOURCE_FOLDER "/tests/support/far_end.py"),
                        device()});
        while (!process_.canReadLine() && process_.waitForReadyRead(patienceMs))
            ;
        return process_.readLine().trimmed();
    }
#endif

    ScratchFolder scratch_;
    QProcess process_;
    QTcpSocket lead_;
};

} // namespace karvo::test
