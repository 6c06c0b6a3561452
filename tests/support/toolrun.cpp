// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolrun.h"

#include <QFileInfo>
#include <QProcess>

ToolRun ToolRun::Shell(const QString &commandLine, const QString &tool, const QStringList &arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(name);
    environment.insert(QStringLiteral("PATH"),
                       QFileInfo(tool).path() + QLatin1Char(':') + environment.value(QStringLiteral("PATH")));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral("/bin/sh"), QStringList{QStringLiteral("-c"), commandLine, tool} + arguments);
    ToolRun run;
    if (process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit)
        run.status = process.exitCode();
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}
