// SPDX-License-Identifier: GPL-3.0-or-later
#include "capturedoutput.h"

#include <cstdio>

#include <unistd.h>

CapturedOutput::CapturedOutput()
{
    out.open();
    err.open();
    std::fflush(stdout);
    std::fflush(stderr);
    savedOut = dup(STDOUT_FILENO);
    savedErr = dup(STDERR_FILENO);
    dup2(out.handle(), STDOUT_FILENO);
    dup2(err.handle(), STDERR_FILENO);
}

CapturedOutput::~CapturedOutput()
{
    std::fflush(stdout);
    std::fflush(stderr);
    dup2(savedOut, STDOUT_FILENO);
    dup2(savedErr, STDERR_FILENO);
    close(savedOut);
    close(savedErr);
}

QByteArray CapturedOutput::Read(const QTemporaryFile &file)
{
    std::fflush(stdout);
    std::fflush(stderr);
    QFile copy(file.fileName());
    return copy.open(QIODevice::ReadOnly) ? copy.readAll() : QByteArray();
}
