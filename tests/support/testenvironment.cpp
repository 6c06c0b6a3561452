// SPDX-License-Identifier: GPL-3.0-or-later
#include "testenvironment.h"

#include <QByteArray>
#include <QDir>

TestEnvironment::TestEnvironment()
{
    const QByteArray base = QFile::encodeName(root.path());
    const char *names[][2] = {{"HOME", "/home"},
                              {"XDG_CONFIG_HOME", "/config"},
                              {"XDG_DATA_HOME", "/data"},
                              {"XDG_CACHE_HOME", "/cache"},
                              {"XDG_RUNTIME_DIR", "/runtime"}};
    for (const auto &name : names) {
        const QByteArray path = base + name[1];
        QDir().mkpath(QFile::decodeName(path));
        QFile::setPermissions(QFile::decodeName(path), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv(name[0], path);
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}
