#include "zipbytes.h"

#include <QFile>
#include <QTemporaryDir>

#include <zip.h>

QByteArray ZipBytes(const QList<QPair<QByteArray, QByteArray>> &entries)
{
    const QTemporaryDir dir;
    const QByteArray path = QFile::encodeName(dir.filePath(QStringLiteral("archive.zip")));
    zipFile archive = zipOpen64(path.constData(), APPEND_STATUS_CREATE);
    for (const auto &entry : entries) {
        zipOpenNewFileInZip64(archive, entry.first.constData(), nullptr, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                              Z_DEFAULT_COMPRESSION, 0);
        zipWriteInFileInZip(archive, entry.second.constData(), unsigned(entry.second.size()));
        zipCloseFileInZip(archive);
    }
    zipClose(archive, nullptr);
    QFile file(QFile::decodeName(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
