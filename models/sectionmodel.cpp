#include "sectionmodel.h"

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
