// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "mainmodel.h"
#include "messagereport.h"
#include "mainproxy.h"
#include "proxymodel.h"
#include "readfailure.h"
#include "sectionmodel.h"
#include "sectionstats.h"
#include "titlemarks.h"

#include <QMap>
#include <QString>

#include <memory>
#include <vector>

class QFileDevice;

// The record of one opened data file, or of several files combined for a
// multiple selection: its header facts, rows, statistics and the proxies
// that the table views show. Owned by the main window's list of files.
class DataFile
{
public:
    explicit DataFile(const QString &path);
    // An empty record, the start of a combined one.
    DataFile();
    DataFile(const DataFile &) = delete;
    DataFile &operator=(const DataFile &) = delete;

    QString ExperimentName() const { return experimentName; }
    void SetExperimentName(const QString &name) { experimentName = name; }
    QString Path() const { return path; }
    QString Date() const { return date; }
    bool LegacyFormat() const { return legacyFormat; }
    // Why the file was not read whole, or None. A record whose file was not
    // read whole holds no rows, and the file is to be refused.
    ReadFailure Failure() const { return failure; }
    const QMap<QString, QString> &HeaderFields() const { return headerFields; }

    // Starts a combined record from the first selected file.
    void CopyFrom(const DataFile &other);
    // Adds a further selected file to a combined record.
    void Combine(const DataFile &other);
    // Writes the merged output file into `file`, which the caller has opened,
    // and reports that it was written; see MainModel::WriteMergedRows for the
    // choices.
    void WriteMergedFile(QFileDevice &file, int rowsToMerge, bool includeHiddenRows, bool transpose,
                         const MessageReport &report) const;

    // Hides visible rows of the table and leaves the statistics alone.
    void HideRows(const QVector<int> &rows);
    // Hides visible rows of the table and takes them out of the statistics.
    // The rows are visible row numbers of the model, free of repeats.
    void HideSelectedRows(const QVector<int> &selected);
    // Brings every hidden row back into the table, and into the statistics
    // what HideSelectedRows took out of them. Does nothing with no row hidden.
    void ShowAllRows();

    SectionStats &Overall() { return overall; }
    MainModel &GetMainModel() { return mainModel; }
    MainProxy &GetMainProxy() { return mainProxy; }
    SectionModel &GetSectionModel() { return sectionModel; }
    ProxyModel &GetSectionProxy() { return sectionProxy; }
    // Where the marks of repeated titles live, one store for each file
    // read; whatever keeps a copy of a title keeps these with it.
    using TitleMarks = std::vector<std::shared_ptr<const TitleMarkStore>>;
    const TitleMarks &GetTitleMarks() const { return titleMarks; }

private:
    void WireModels();
    void Parse();
    ReadFailure ReadFile();
    QVector<HiddenSectionStats> HiddenShares(const QVector<int> &rows) const;
    QString Cell(int row, int column) const;
    double CellValue(int row, int column) const;

    bool legacyFormat = false;
    ReadFailure failure = ReadFailure::None;
    QString path;
    QString experimentName;
    QString date;
    SectionStats overall;
    QMap<QString, QString> headerFields;
    MainModel mainModel;
    MainProxy mainProxy;
    SectionModel sectionModel;
    ProxyModel sectionProxy;
    TitleMarks titleMarks;
};
