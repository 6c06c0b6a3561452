#include "sectionmodel.h"

#include "sectionindex.h"

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

// One HideStats or RestoreHiddenStats call: the lists it touches, and
// whether it changed the table on show without telling the views row by row.
struct SectionChange
{
    explicit SectionChange(const QVector<SectionStats> *shown)
        : shownBefore(shown)
    {
    }

    const QVector<SectionStats> *shownBefore;
    bool viewsBehind = false;
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

int SectionModel::rowCount(const QModelIndex &) const
{
    const QVector<SectionStats> *shown = Shown();
    return shown ? shown->size() : 0;
}

int SectionModel::columnCount(const QModelIndex &) const
{
    return 4;
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
// column 2 and "NR" over column 3; that is how the table has always looked.
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
    emit layoutAboutToBeChanged();
    this->sectionType = sectionType;
    emit layoutChanged();
}

void SectionModel::ChangeDataType(int dataType)
{
    this->dataType = dataType;
    EmitAllChanged();
}

void SectionModel::ChangeSubIndex(int subIndex)
{
    emit layoutAboutToBeChanged();
    this->subIndex = subIndex == -1 ? 0 : subIndex;
    emit layoutChanged();
}

const QVector<SectionStats> *SectionModel::Shown() const
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

void SectionModel::EmitAllChanged()
{
    emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), {});
}

void SectionModel::HideStats(const QVector<HiddenSectionStats> &list)
{
    // Lists are found by address from here on, so they must not move.
    trialVariables.detach();
    codeColumns.detach();
    SectionChange change(Shown());
    for (const HiddenSectionStats &record : list) {
        KeepHidden(record);
        TakeFromSection(record, &change);
    }
    EndChange(&change);
}

void SectionModel::RestoreHiddenStats()
{
    if (hiddenStats.isEmpty())
        return;
    trialVariables.detach();
    codeColumns.detach();
    SectionChange change(Shown());
    for (const HiddenSectionStats *record : qAsConst(hiddenStats))
        GiveBackToSection(*record, &change);
    qDeleteAll(hiddenStats);
    hiddenStats.clear();
    hiddenByKey.clear();
    EndChange(&change);
}

// Compares the record's type with the data selector, not the section
// selector, and turns down the trial variable or code column on show.
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

// Sections that go are taken out at once only from the table on show when
// views hear of each; from any other list they go together at the end.
SectionIndex &SectionModel::IndexOf(const HiddenSectionStats &record, SectionChange *change)
{
    QVector<SectionStats> &target = TargetOf(record);
    auto found = change->indexes.find(&target);
    if (found == change->indexes.end()) {
        const bool eraseAtOnce = &target == change->shownBefore && IsOnShow(record);
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
    const int row = sections.RowOf(section);
    SectionStats &stats = sections.Record(section);
    stats.Subtract(record);
    if (stats.TotalCount() == 0) {
        const bool announce = MayAnnounceRow(TargetOf(record), record, row, false, change);
        if (announce)
            beginRemoveRows(QModelIndex(), row, row);
        sections.Erase(section);
        if (announce)
            endRemoveRows();
    } else {
        stats.Finish();
        if (IsOnShow(record))
            emit dataChanged(index(row, 0), index(row, columnCount() - 1), {});
    }
}

void SectionModel::GiveBackToSection(const HiddenSectionStats &record, SectionChange *change)
{
    SectionIndex &sections = IndexOf(record, change);
    int section = sections.Find(record.name);
    if (section < 0) {
        const int row = TargetOf(record).size();
        const bool announce = MayAnnounceRow(TargetOf(record), record, row, true, change);
        if (announce)
            beginInsertRows(QModelIndex(), row, row);
        section = sections.Append(record);
        if (announce)
            endInsertRows();
    } else {
        sections.Record(section).Add(record);
    }
    sections.Record(section).Finish();
    const int row = sections.RowOf(section);
    if (IsOnShow(record))
        emit dataChanged(index(row, 0), index(row, columnCount() - 1), {});
}

void SectionModel::EndChange(SectionChange *change)
{
    for (auto &entry : change->indexes)
        entry.second.Finish();
    if (change->viewsBehind || Shown() != change->shownBefore) {
        emit layoutAboutToBeChanged();
        emit layoutChanged();
    }
}

// Row notifications follow IsOnShow. One that names a row the table on show
// does not have would corrupt a proxy's row mapping, so it is left out; and
// whenever the views were not told of a change to the table on show, or were
// told of a change to another table, they get a layout change at the end.
bool SectionModel::MayAnnounceRow(const QVector<SectionStats> &target,
                                  const HiddenSectionStats &record, int row, bool insertion,
                                  SectionChange *change) const
{
    const bool shown = &target == Shown();
    const int rowsOnShow = rowCount();
    const bool fits = insertion ? row <= rowsOnShow : row < rowsOnShow;
    if (!IsOnShow(record) || !fits) {
        change->viewsBehind = change->viewsBehind || shown;
        return false;
    }
    change->viewsBehind = change->viewsBehind || !shown;
    return true;
}
