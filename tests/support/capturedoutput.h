// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QTemporaryFile>

// Catches what the process writes to standard output and standard error
// while it lives, for tests that run a command-line tool in-process.
class CapturedOutput
{
public:
    CapturedOutput();
    ~CapturedOutput();
    CapturedOutput(const CapturedOutput &) = delete;
    CapturedOutput &operator=(const CapturedOutput &) = delete;

    // What was written so far.
    QByteArray Out() const { return Read(out); }
    QByteArray Err() const { return Read(err); }

private:
    static QByteArray Read(const QTemporaryFile &file);

    QTemporaryFile out;
    QTemporaryFile err;
    int savedOut = -1;
    int savedErr = -1;
};
