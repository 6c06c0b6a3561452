#pragma once

#include "cloudexperiment.h"

#include <QString>
#include <QStringList>

class CloudClient;

// The local cache of the cloud's downloads, one directory per experiment
// code in the program's data location: the participants file rt_info, the
// result archive data.zip and its files unpacked flat into data/. It
// fetches through the main window's client; the panel's slots decide when.
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
    void UpdateParticipants(int code, CloudExperiment &experiment);
    // Fetches and unpacks the archive unless data/ holds as many entries
    // as there are participants.
    void RefreshExperimentData(int code, int participants);

private:
    static QString DataDir(int code);

    CloudClient &client;
};
