// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// What a command-line tool run to its end left: its exit status (-1 when it
// crashed or did not end within a minute) and what it printed.
struct ToolRun
{
    int status = -1;
    QByteArray out;
    QByteArray err;

    // Runs `/bin/sh -c commandLine tool arguments...` as over ssh on a
    // compute server: without DISPLAY, WAYLAND_DISPLAY or QT_QPA_PLATFORM,
    // and with the directory of `tool` first on the path, so that the line
    // may name the tool as an installed one, or run "$0" "$@".
    static ToolRun Shell(const QString &commandLine, const QString &tool, const QStringList &arguments = {});
};
