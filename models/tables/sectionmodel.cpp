// SPDX-License-Identifier: GPL-3.0-or-later
#include "sectionmodel.h"

#include "sectionindex.h"

#include <algorithm>
#include <map>

namespace {

const QVector<SectionStats> *EntryAt(const QMap<QString, QVector<SectionStats>> &map, int position)
{
    if (position < 0 || position >= map.size())
        return nullptr;
    return &*std::next(map.constBegin(), position);
}

void MergeStores(QMap<QString, QVector<SectionStats>> &into,
                 const QMap<QString, QVector<SectionStats>> &other)
{
    for (auto entry = other.constBegin(); entry != other.constEnd(); ++entry) {
        auto found = into.find(entry.key());
        if (found == into.end())
            into.insert(entry.key(), entry.value());
        else
            MergeStats(*found, entry.value());
    }
}

} // namespace

// One HideStats or RestoreHiddenStats call: the table whose rows views hear
// about one by one (none when they hear of a change of layout), and the
// lists the call touches.
struct SectionChange
{
    explicit SectionChange(const QVector<SectionStats> *announced)
        : announced(announced)
    {
    }

    const QVector<SectionStats> *announced;
    std::map<const QVector<SectionStats> *, SectionIndex> indexes;
};

SectionModel::SectionModel(QObject *parent)
    : BaseModel(parent)
{
}

SectionModel::~SectionModel()
{
    qDeleteAll(hiddenStats);
}

void SectionModel::SetSections(QVector<SectionStats> &blocks, QVector<SectionStats> &trials,
                               QMap<QString, QVector<SectionStats>> &trialVariables,
                               QMap<QString, QVector<SectionStats>> &codeColumns)
{
    this->blocks.swap(blocks);
    this->trials.swap(trials);
    this->trialVariables.swap(trialVariables);
    this->codeColumns.swap(codeColumns);
    blocks.clear();
    trials.clear();
    trialVariables.clear();
    codeColumns.clear();
}

void SectionModel::CopySections(const SectionModel &other)
{
    blocks = other.blocks;
    trials = other.trials;
    trialVariables = other.trialVariables;
    codeColumns = other.codeColumns;
}

void SectionModel::MergeSections(const SectionModel &other)
{
    MergeStats(blocks, other.blocks);
    MergeStats(trials, other.trials);
    MergeStores(trialVariables, other.trialVariables);
    MergeStores(codeColumns, other.codeColumns);
}

// A table's cells have no children.
int SectionModel::rowCount(const QModelIndex &parent) const
{
    const QVector<SectionStats> *shown = Shown();
    return shown && !parent.isValid() ? shown->size() : 0;
}

int SectionModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 4;
}

QVariant SectionModel::data(const QModelIndex &index, int role) const
{
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignRight);
    if (role != Qt::DisplayRole)
        return QVariant();
    const QVector<SectionStats> *shown = Shown();
    if (!shown || index.row() < 0 || index.row() >= shown->size())
        return QVariant();
    return shown->at(index.row()).FormatValue(index.column(), dataType);
}

// The slots keep "NR" at 2 and "SC" at 3, yet the headers read "SC" over
// column 2 and "NR" over column 3. The swap is deliberate.
QVariant SectionModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::DisplayRole && orientation == Qt::Horizontal) {
        static const QStringList titles{QStringLiteral("C"), QStringLiteral("E"),
                                        QStringLiteral("SC"), QStringLiteral("NR")};
        return titles.value(section);
    }
    if (role == Qt::DisplayRole && orientation == Qt::Vertical) {
        const QVector<SectionStats> *shown = Shown();
        if (!shown || section < 0 || section >= shown->size())
            return QVariant();
        return shown->at(section).name;
    }
    return BaseModel::headerData(section, orientation, role);
}

QStringList SectionModel::TrialVariableNames() const
{
    QStringList names = trialVariables.keys();
    for (QString &name : names)
        name.remove(QStringLiteral("\n(Trial Variable)"));
    return names;
}

QStringList SectionModel::CodeNames() const
{
    return codeColumns.keys();
}

void SectionModel::ChangeSectionType(int sectionType)
{
    ChangeLayout([=] { this->sectionType = sectionType; });
}

void SectionModel::ChangeDataType(int dataType)
{
    this->dataType = dataType;
    EmitAllChanged();
}

void SectionModel::ChangeSubIndex(int subIndex)
{
    ChangeLayout([=] { this->subIndex = subIndex == -1 ? 0 : subIndex; });
}

const QVector<SectionStats> *SectionModel::Shown() const
{
    return Records(sectionType, subIndex);
}

const QVector<SectionStats> *SectionModel::Records(int sectionType, int subIndex) const
{
    switch (sectionType) {
    case 0:
        return &blocks;
    case 1:
        return &trials;
    case 2:
        return EntryAt(trialVariables, subIndex);
    case 3:
        return EntryAt(codeColumns, subIndex);
    default:
        return nullptr;
    }
}

// A table with no row has no cell to name, and nothing to repaint.
void SectionModel::EmitAllChanged()
{
    if (rowCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), {});
}

void SectionModel::HideStats(const QVector<HiddenSectionStats> &list)
{
    AddMissingLists(list);
    KeepListsInPlace();
    const bool rowByRow = std::all_of(list.begin(), list.end(),
                                      [this](const HiddenSectionStats &record) { return TellsRowByRow(record); });
    RunChange(rowByRow, [&](SectionChange *change) {
        for (const HiddenSectionStats &record : list) {
            KeepHidden(record);
            TakeFromSection(record, change);
        }
    });
}

void SectionModel::RestoreHiddenStats()
{
    if (hiddenStats.isEmpty())
        return;
    KeepListsInPlace();
    const bool rowByRow = std::all_of(hiddenStats.begin(), hiddenStats.end(),
                                      [this](const HiddenSectionStats *record) { return TellsRowByRow(*record); });
    RunChange(rowByRow, [&](SectionChange *change) {
        for (const HiddenSectionStats *record : qAsConst(hiddenStats))
            GiveBackToSection(*record, change);
    });
    qDeleteAll(hiddenStats);
    hiddenStats.clear();
    hiddenByKey.clear();
}

// Lists are found by address during a change, so they must not move.
void SectionModel::KeepListsInPlace()
{
    trialVariables.detach();
    codeColumns.detach();
}

// Compares the record's type with the data selector, not the section
// selector, and turns down the trial variable or code column on show; both
// are deliberate, as they decide which changes views hear of row by row.
bool SectionModel::IsOnShow(const HiddenSectionStats &record) const
{
    bool result = record.sectionType == dataType;
    if (record.sectionType == 2 && subIndex < trialVariables.size()
        && record.columnName == std::next(trialVariables.constBegin(), subIndex).key())
        result = false;
    if (record.sectionType == 3 && subIndex < codeColumns.size()
        && record.columnName == std::next(codeColumns.constBegin(), subIndex).key())
        result = false;
    return result;
}

// Rows of lists that are not on show are no view's business.
bool SectionModel::TellsRowByRow(const HiddenSectionStats &record)
{
    return &TargetOf(record) != Shown() || IsOnShow(record);
}

// Views hear of each row of the table on show as it changes; when a record
// that changes that table is not on show, they hear of the whole call as
// one change of layout instead, and of no row.
template <typename Apply>
void SectionModel::RunChange(bool rowByRow, Apply apply)
{
    const auto run = [&](const QVector<SectionStats> *announced) {
        SectionChange change(announced);
        apply(&change);
        FinishChange(&change);
    };
    if (rowByRow)
        run(Shown());
    else
        ChangeLayout([&] { run(nullptr); });
}

// Hiding reads the grouping columns by place, so a record may name a column
// that has no list yet; that list is made, empty, before anything else
// changes. A new key can move another list to the place the table on show
// is chosen by, and views hear of that as a change of layout.
void SectionModel::AddMissingLists(const QVector<HiddenSectionStats> &list)
{
    QStringList newTrialVariables;
    QStringList newCodeColumns;
    for (const HiddenSectionStats &record : list) {
        if (record.sectionType == 2 && !trialVariables.contains(record.columnName))
            newTrialVariables.append(record.columnName);
        else if (record.sectionType > 2 && !codeColumns.contains(record.columnName))
            newCodeColumns.append(record.columnName);
    }
    const auto addLists = [&] {
        for (const QString &name : qAsConst(newTrialVariables))
            trialVariables[name];
        for (const QString &name : qAsConst(newCodeColumns))
            codeColumns[name];
    };
    if ((sectionType == 2 && !newTrialVariables.isEmpty()) || (sectionType == 3 && !newCodeColumns.isEmpty()))
        ChangeLayout(addLists);
    else
        addLists();
}

// Views keep their places by row number; places past the end of the table
// now on show are let go, as the contract of a layout change asks.
template <typename Change>
void SectionModel::ChangeLayout(Change change)
{
    emit layoutAboutToBeChanged();
    change();
    const int rows = rowCount();
    const QModelIndexList places = persistentIndexList();
    for (const QModelIndex &place : places) {
        if (place.row() >= rows)
            changePersistentIndex(place, QModelIndex());
    }
    emit layoutChanged();
}

QVector<SectionStats> &SectionModel::TargetOf(const HiddenSectionStats &record)
{
    switch (record.sectionType) {
    case 0:
        return blocks;
    case 1:
        return trials;
    case 2:
        return trialVariables[record.columnName];
    default:
        return codeColumns[record.columnName];
    }
}

// Sections that go are taken out at once from the table whose rows views
// hear of; from any other list they go together at the end.
SectionIndex &SectionModel::IndexOf(const HiddenSectionStats &record, SectionChange *change)
{
    QVector<SectionStats> &target = TargetOf(record);
    auto found = change->indexes.find(&target);
    if (found == change->indexes.end()) {
        const bool eraseAtOnce = &target == change->announced;
        found = change->indexes.emplace(&target, SectionIndex(&target, eraseAtOnce)).first;
    }
    return found->second;
}

void SectionModel::KeepHidden(const HiddenSectionStats &record)
{
    HiddenSectionStats *&kept = hiddenByKey[record.Key()];
    if (kept) {
        kept->Add(record);
        return;
    }
    kept = new HiddenSectionStats(record);
    hiddenStats.append(kept);
}

void SectionModel::TakeFromSection(const HiddenSectionStats &record, SectionChange *change)
{
    SectionIndex &sections = IndexOf(record, change);
    const int section = sections.Find(record.name);
    if (section < 0)
        return;
    const bool announce = &TargetOf(record) == change->announced;
    const int row = sections.RowOf(section);
    SectionStats &stats = sections.Record(section);
    stats.Subtract(record);
    if (stats.TotalCount() == 0) {
        if (announce)
            beginRemoveRows(QModelIndex(), row, row);
        sections.Erase(section);
        if (announce)
            endRemoveRows();
    } else {
        stats.Finish();
        if (announce)
            EmitRowChanged(row);
    }
}

void SectionModel::GiveBackToSection(const HiddenSectionStats &record, SectionChange *change)
{
    SectionIndex &sections = IndexOf(record, change);
    const bool announce = &TargetOf(record) == change->announced;
    int section = sections.Find(record.name);
    if (section < 0) {
        const int row = TargetOf(record).size();
        if (announce)
            beginInsertRows(QModelIndex(), row, row);
        section = sections.Append(record);
        if (announce)
            endInsertRows();
    } else {
        sections.Record(section).Add(record);
    }
    sections.Record(section).Finish();
    if (announce)
        EmitRowChanged(sections.RowOf(section));
}

void SectionModel::EmitRowChanged(int row)
{
    emit dataChanged(index(row, 0), index(row, columnCount() - 1), {});
}

void SectionModel::FinishChange(SectionChange *change)
{
    for (auto &entry : change->indexes)
        entry.second.Finish();
}
