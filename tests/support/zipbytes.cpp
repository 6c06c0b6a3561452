// SPDX-License-Identifier: GPL-3.0-or-later
#include "zipbytes.h"

#include <QFile>
#include <QtEndian>
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

// Each entry of the central directory points at the one local entry; only
// the names differ, and they are as long as the local one. The end record
// counts the entries and the directory's size anew.
QByteArray OverlappingZipBytes(const QByteArray &content, int count)
{
    const QByteArray single = ZipBytes({{"f0000.txt", content}});
    const int end = single.size() - 22;
    const int directory = int(qFromLittleEndian<quint32>(single.constData() + end + 16));
    const QByteArray entry = single.mid(directory, end - directory);
    QByteArray archive = single.left(directory);
    for (int i = 0; i < count; ++i)
        archive += QByteArray(entry).replace(46, 9, QString::asprintf("f%04d.txt", i).toLatin1());
    QByteArray record = single.mid(end);
    qToLittleEndian<quint16>(quint16(count), record.data() + 8);
    qToLittleEndian<quint16>(quint16(count), record.data() + 10);
    qToLittleEndian<quint32>(quint32(count * entry.size()), record.data() + 12);
    return archive + record;
}
