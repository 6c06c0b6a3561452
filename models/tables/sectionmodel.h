// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "basemodel.h"
#include "hiddensectionstats.h"
#include "sectionstats.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QStringList>
#include <QVector>

// Response statistics of one file grouped by section (per block, trial,
// trial variable value or code value), and the table of one group that the
// summary tab shows. Owned by its DataFile.
class SectionIndex;
struct SectionChange;

class SectionModel : public BaseModel
{
    Q_OBJECT

public:
    explicit SectionModel(QObject *parent = nullptr);
    ~SectionModel() override;

    // Takes over the four stores and empties the arguments.
    void SetSections(QVector<SectionStats> &blocks, QVector<SectionStats> &trials,
                     QMap<QString, QVector<SectionStats>> &trialVariables,
                     QMap<QString, QVector<SectionStats>> &codeColumns);

    // Makes the four stores copies of `other`'s; hidden records and
    // selectors stay as they are.
    void CopySections(const SectionModel &other);
    // Adds `other`'s sections, matching records by name within each store.
    void MergeSections(const SectionModel &other);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // The records that `sectionType` and `subIndex` choose, as the
    // selectors of the same values would; null when they choose none.
    const QVector<SectionStats> *Records(int sectionType, int subIndex) const;
    QStringList TrialVariableNames() const;
    QStringList CodeNames() const;

    // Takes the share of hidden rows out of the sections and keeps it in
    // hiddenStats, merged by section. A section left with no row goes.
    void HideStats(const QVector<HiddenSectionStats> &list);
    // Gives every section back what HideStats took; a section that had gone
    // comes back at the end of its table.
    void RestoreHiddenStats();
    const QList<HiddenSectionStats *> &HiddenStats() const { return hiddenStats; }
    // Whether views hear of a change to `record`'s section row by row.
    bool IsOnShow(const HiddenSectionStats &record) const;

public slots:
    void ChangeSectionType(int sectionType);
    void ChangeDataType(int dataType);
    void ChangeSubIndex(int subIndex);

private:
    // The records that the selectors choose; null when they choose none.
    const QVector<SectionStats> *Shown() const;
    void EmitAllChanged();
    void EmitRowChanged(int row);
    // Runs `change` as a change of layout that may choose another table.
    template <typename Change>
    void ChangeLayout(Change change);
    void AddMissingLists(const QVector<HiddenSectionStats> &list);
    void KeepListsInPlace();
    bool TellsRowByRow(const HiddenSectionStats &record);
    template <typename Apply>
    void RunChange(bool rowByRow, Apply apply);
    QVector<SectionStats> &TargetOf(const HiddenSectionStats &record);
    SectionIndex &IndexOf(const HiddenSectionStats &record, SectionChange *change);
    void KeepHidden(const HiddenSectionStats &record);
    void TakeFromSection(const HiddenSectionStats &record, SectionChange *change);
    void GiveBackToSection(const HiddenSectionStats &record, SectionChange *change);
    void FinishChange(SectionChange *change);

    QVector<SectionStats> blocks;
    QVector<SectionStats> trials;
    QMap<QString, QVector<SectionStats>> trialVariables;
    QMap<QString, QVector<SectionStats>> codeColumns;
    int sectionType = 0;
    int dataType = 0;
    int subIndex = 0;
    QList<HiddenSectionStats *> hiddenStats;
    // hiddenStats by HiddenSectionStats::Key(), kept in step with it.
    QHash<QString, HiddenSectionStats *> hiddenByKey;
};
