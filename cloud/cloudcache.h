// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cloudexperiment.h"

#include <QString>
#include <QStringList>

class CloudClient;

// The local cache of the cloud's downloads, one directory per experiment
// code in the program's data location: the participants file rt_info, the
// result archive data.zip and its files unpacked flat into data/, all for
// their owner's eyes alone. It fetches through the main window's client
// within the client's limits; the panel's slots decide when, and show
// what a limit that stopped the work leaves to tell.
class CloudCache
{
public:
    explicit CloudCache(CloudClient &client);

    static QString AppDataDir();
    // Made on first use, so that the directory exists as soon as anything
    // asks for it.
    static QString ExperimentDir(int code);
    static QString ArchivePath(int code);
    // The unpacked files, by name without regard to case, as full paths.
    static QStringList DataFiles(int code);

    // Fetches rt_info again and counts the experiment's participants in it.
    // Returns what the user is to be told of a limit that stopped the
    // download, or nothing.
    QString UpdateParticipants(int code, CloudExperiment &experiment);
    // Fetches and unpacks the archive unless data/ holds as many entries
    // as there are participants. Returns what the user is to be told of a
    // limit that stopped the download or the unpacking, or nothing.
    QString RefreshExperimentData(int code, int participants);

private:
    static QString DataDir(int code);
    static QString OwnerOnlyDir(const QString &path);

    CloudClient &client;
};
