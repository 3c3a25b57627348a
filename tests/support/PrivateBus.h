#pragma once

#include <QProcess>

/// A message bus that only those know who are told its address; gone with the test.
class PrivateBus {
public:
    PrivateBus()
    {
        daemon.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
        daemon.waitForReadyRead();
        line = QString::fromUtf8(daemon.readLine()).trimmed();
    }
    ~PrivateBus()
    {
        daemon.kill();
        daemon.waitForFinished();
    }

    /// Empty when it could not be started.
    const QString& address() const { return line; }

private:
    QProcess daemon;
    QString line;
};
