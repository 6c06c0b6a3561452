// SPDX-License-Identifier: GPL-3.0-or-later
#include "testfiles.h"

#include "informationbox.h"

#include <QFile>

QByteArray ReadAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString TestFiles::Write(const DataFileBuilder &builder)
{
    return builder.Write(NextPath());
}

QString TestFiles::Write(const QByteArray &bytes)
{
    const QString path = NextPath();
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(bytes);
    return path;
}

std::unique_ptr<DataFile> TestFiles::Open(const DataFileBuilder &builder)
{
    return std::make_unique<DataFile>(Write(builder));
}

QByteArray TestFiles::Merge(const DataFile &file, int rowsToMerge, bool includeHiddenRows, bool transpose)
{
    const QString path = Path(QStringLiteral("merged.txt"));
    {
        QFile output(path);
        if (!output.open(QIODevice::WriteOnly | QIODevice::Text))
            return QByteArray();
        file.WriteMergedFile(output, rowsToMerge, includeHiddenRows, transpose, ShowInformationBox);
    }
    return ReadAll(path);
}

QString TestFiles::NextPath()
{
    return dir.filePath(QStringLiteral("data%1.txt").arg(++written));
}
