// SPDX-License-Identifier: GPL-3.0-or-later
#include "tooloutput.h"

#include "wholewrites.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>

ToolOutput::ToolOutput(const QString &program, const QString &name, QIODevice::OpenMode mode)
    : program(program)
    , name(name)
{
    const QFileInfo target(name);
    if (name.isEmpty() || (target.exists() && !target.isFile())) {
        auto file = std::make_unique<WholeWrites<QFile>>(name);
        if (name.isEmpty())
            file->open(fileno(stdout), mode);
        else
            file->open(mode);
        device = std::move(file);
    } else {
        device = std::make_unique<WholeWrites<QSaveFile>>(name);
        device->open(mode);
    }
}

ToolOutput::~ToolOutput() = default;

bool ToolOutput::IsOpen() const
{
    return device->isOpen();
}

bool ToolOutput::IsRegularFile() const
{
    return qobject_cast<QSaveFile *>(device.get()) != nullptr;
}

// A save file's commit misses an error of the flush that closing does, so
// the flush comes first and on its own.
bool ToolOutput::Flush()
{
    return device->flush() && device->error() == QFileDevice::NoError;
}

bool ToolOutput::Commit()
{
    auto *file = qobject_cast<QSaveFile *>(device.get());
    return !file || file->commit();
}

QString ToolOutput::ErrorText() const
{
    const QString target = name.isEmpty() ? QStringLiteral("standard output") : name;
    return QStringLiteral("%1: cannot write %2: %3").arg(program, target, device->errorString());
}
