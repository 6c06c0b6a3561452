// SPDX-License-Identifier: GPL-3.0-or-later
#include "cloudcache.h"

#include "cloudclient.h"
#include "unziparchive.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <limits>

namespace {

int CountNewlines(QFile &file)
{
    const qint64 chunkSize = 64 * 1024;
    qint64 count = 0;
    while (!file.atEnd()) {
        const QByteArray chunk = file.read(chunkSize);
        if (chunk.isEmpty())
            break;
        count += chunk.count('\n');
    }
    return int(qMin<qint64>(count, std::numeric_limits<int>::max()));
}

// The texts of a stop that the user is told of; a download's failed write
// is a failed call like any other.
QString DownloadNotice(WriteStop stop)
{
    switch (stop) {
    case WriteStop::TooLarge:
        return QStringLiteral("The download stopped: more than 4 GB.");
    case WriteStop::DiskNearlyFull:
        return QStringLiteral("The download stopped: the disk is nearly full.");
    case WriteStop::WriteFailed:
    case WriteStop::None:
        break;
    }
    return QString();
}

QString UnpackNotice(WriteStop stop)
{
    const QString text = QStringLiteral("The experiment's archive was not unpacked whole: %1.");
    switch (stop) {
    case WriteStop::TooLarge:
        return text.arg(QStringLiteral("it unpacks to more than 200 times its size"));
    case WriteStop::WriteFailed:
        return text.arg(QStringLiteral("a file could not be written"));
    case WriteStop::DiskNearlyFull:
        return text.arg(QStringLiteral("the disk is nearly full"));
    case WriteStop::None:
        break;
    }
    return QString();
}

} // namespace

CloudCache::CloudCache(CloudClient &client)
    : client(client)
{
}

QString CloudCache::AppDataDir()
{
    const QString dir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir().mkpath(dir);
    return dir;
}

// The code alone names the directory, so an experiment keeps its cache from
// one run to the next and across accounts.
QString CloudCache::ExperimentDir(int code)
{
    return OwnerOnlyDir(OwnerOnlyDir(AppDataDir() + QLatin1String("/Cloud")) + QLatin1Char('/') + QString::number(code));
}

QString CloudCache::ArchivePath(int code)
{
    return ExperimentDir(code) + QLatin1String("/data.zip");
}

QStringList CloudCache::DataFiles(int code)
{
    const QDir data(DataDir(code));
    QStringList paths;
    for (const QString &name : data.entryList(QDir::Files))
        paths.append(data.absoluteFilePath(name));
    return paths;
}

// Each line of rt_info stands for one participant's data file; only the
// newlines are counted, so a last line without one does not count, and an
// empty or absent file counts 0. So does a failed download, whatever part
// of the file came before it failed.
QString CloudCache::UpdateParticipants(int code, CloudExperiment &experiment)
{
    const QString path = ExperimentDir(code) + QLatin1String("/rt_info");
    const WriteStop stop = client.DownloadRtInfo(code, path);
    QFile file(path);
    experiment.participants = !client.LastCallFailed() && file.open(QIODevice::ReadOnly) ? CountNewlines(file) : 0;
    // Too large a file is a failed call, told of by the count alone.
    return stop == WriteStop::TooLarge ? QString() : DownloadNotice(stop);
}

// The entry count of data/ is the cache's only state: when it equals the
// participants the files there are used, whatever they are. Otherwise the
// archive is fetched and unpacked over them, and none of them is deleted.
// Only a limit that stopped the work is told; any other failure shows only
// in what there is to open. An archive whose download stopped is gone, so
// there is nothing to unpack.
QString CloudCache::RefreshExperimentData(int code, int participants)
{
    const QString archive = ArchivePath(code);
    const QString dataPath = DataDir(code);
    const QDir data(dataPath, QString(), QDir::Name | QDir::IgnoreCase, QDir::AllEntries | QDir::NoDotAndDotDot);
    OwnerOnlyDir(dataPath);
    if (participants == int(data.count()))
        return QString();
    const WriteStop downloadStop = client.DownloadResult(code, archive);
    if (downloadStop != WriteStop::None)
        return DownloadNotice(downloadStop);
    WriteStop unpackStop = WriteStop::None;
    UnzipArchive(archive.toStdString().c_str(), dataPath.toStdString().c_str(), client.Limits(), &unpackStop);
    return UnpackNotice(unpackStop);
}

QString CloudCache::DataDir(int code)
{
    return ExperimentDir(code) + QLatin1String("/data/");
}

// Made if need be, and set to its owner alone whatever the umask made it.
QString CloudCache::OwnerOnlyDir(const QString &path)
{
    QDir().mkpath(path);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}
