// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIODevice>
#include <QString>

#include <memory>

class QFileDevice;

// Where a command-line tool writes a file, whole or not at all: a regular
// file goes to a temporary name beside the target and takes the target's
// name only at Commit, so a failed or interrupted run leaves an earlier
// file of that name as it was. Standard output, and a target that exists
// but is no regular file (a device, a pipe), are written straight into,
// since renaming onto them would replace them. Every write is whole or
// fails (WholeWrites).
class ToolOutput
{
public:
    // An empty name means standard output. `program` begins the error text.
    ToolOutput(const QString &program, const QString &name, QIODevice::OpenMode mode);
    ~ToolOutput();

    bool IsOpen() const;
    QFileDevice &Device() { return *device; }
    // Whether the target takes its name at Commit.
    bool IsRegularFile() const;
    // Whether everything written so far has reached the device.
    bool Flush();
    // Gives a regular file its name; true at once for any other target.
    bool Commit();
    // "<program>: cannot write <target>: <reason>".
    QString ErrorText() const;

private:
    QString program;
    QString name;
    std::unique_ptr<QFileDevice> device;
};
