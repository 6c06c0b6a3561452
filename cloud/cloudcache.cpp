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
    const QString dir = AppDataDir() + QLatin1String("/Cloud/") + QString::number(code);
    QDir().mkpath(dir);
    return dir;
}

QString CloudCache::ArchivePath(int code)
{
    return ExperimentDir(code) + QLatin1String("/data.zip");
}

QString CloudCache::DataDir(int code)
{
    return ExperimentDir(code) + QLatin1String("/data/");
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
// empty, absent or failed file counts 0.
void CloudCache::UpdateParticipants(int code, CloudExperiment &experiment)
{
    const QString path = ExperimentDir(code) + QLatin1String("/rt_info");
    client.DownloadRtInfo(code, path);
    QFile file(path);
    experiment.participants = file.open(QIODevice::ReadOnly) ? CountNewlines(file) : 0;
}

// The entry count of data/ is the cache's only state: when it equals the
// participants the files there are used, whatever they are. Otherwise the
// archive is fetched and unpacked over them; nothing is deleted, and a
// failure shows only in what there is to open.
void CloudCache::RefreshExperimentData(int code, int participants)
{
    const QString archive = ArchivePath(code);
    const QString dataPath = DataDir(code);
    const QDir data(dataPath, QString(), QDir::Name | QDir::IgnoreCase, QDir::AllEntries | QDir::NoDotAndDotDot);
    QDir().mkpath(dataPath);
    if (participants == int(data.count()))
        return;
    client.DownloadResult(code, archive);
    UnzipArchive(archive.toStdString().c_str(), dataPath.toStdString().c_str());
}
