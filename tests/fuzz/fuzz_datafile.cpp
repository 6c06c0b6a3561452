// SPDX-License-Identifier: GPL-3.0-or-later
// A data file taken through the whole of a user's open: validation, the
// record with its statistics, every cell and header of both tables in each
// role a view asks for, flags, rules and colours, hiding and showing rows,
// sorting through both proxies, combining with itself and with a second
// file, and the merged output file plain and transposed. Small tables are
// watched by QAbstractItemModelTester besides. The time limit per kilobyte
// holds for the open itself; all that follows repeats it many times over
// and is left to the fuzzer's timeout.

#include "datafile.h"
#include "datafilebuilder.h"
#include "datafilevalidator.h"
#include "fuzzenvironment.h"
#include "tablecontents.h"

#include <QAbstractItemModelTester>
#include <QFile>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace {

const int kRoles[] = {Qt::DisplayRole, Qt::DecorationRole, Qt::BackgroundRole, Qt::ForegroundRole,
                      Qt::TextAlignmentRole, Qt::ToolTipRole};
// The tester walks every cell at every notification; beyond this many cells
// it would cost more than the rest of the input together.
const int kWatchedCells = 200;

// What a user would read in a message box is of no concern here.
void IgnoreMessage(const QString &, const QString &) {}

// A file of Kelmarun's own columns, for combining with the input.
QString SecondFile()
{
    static const QString path = FuzzEnvironment::Instance().Write(
        QStringLiteral("second.txt"),
        DataFileBuilder().KelmarunTitles().Trials({"B1,T1,C,300", "B2,T2,E,512.9", "B1,T3,SC,", "B3,T1,NR,700"}).Bytes());
    return path;
}

void ReadModel(const QAbstractItemModel &model)
{
    const int rows = model.rowCount();
    const int columns = model.columnCount();
    for (const int role : kRoles) {
        for (int column = 0; column < columns; ++column) {
            model.headerData(column, Qt::Horizontal, role);
            for (int row = 0; row < rows; ++row)
                model.data(model.index(row, column), role);
        }
        for (int row = 0; row < rows; ++row)
            model.headerData(row, Qt::Vertical, role);
    }
}

void ReadStatistics(const SectionStats &stats)
{
    stats.FormatAverageRt();
    for (int dataType = 0; dataType < 3; ++dataType) {
        for (int position = 0; position < 4; ++position)
            stats.FormatValue(position, dataType);
    }
}

// Every list the drop-downs can choose, in every data type, and when asked
// sorted by each column both ways.
void ReadSections(DataFile &file, bool sorted)
{
    SectionModel &sections = file.GetSectionModel();
    ProxyModel &proxy = file.GetSectionProxy();
    const int lists[] = {1, 1, sections.TrialVariableNames().size(), sections.CodeNames().size()};
    for (int sectionType = 0; sectionType < 4; ++sectionType) {
        sections.ChangeSectionType(sectionType);
        for (int subIndex = -1; subIndex < lists[sectionType]; ++subIndex) {
            sections.ChangeSubIndex(subIndex);
            for (int dataType = 0; dataType < 3; ++dataType) {
                sections.ChangeDataType(dataType);
                ReadModel(proxy);
            }
            for (int column = 0; sorted && column < sections.columnCount(); ++column) {
                proxy.sort(column, Qt::AscendingOrder);
                proxy.sort(column, Qt::DescendingOrder);
            }
            proxy.sort(-1);
        }
    }
    sections.ChangeSectionType(0);
    sections.ChangeSubIndex(0);
    ReadStatistics(file.Overall());
}

void RunRules(MainModel &model)
{
    model.CalculateStandardDeviation();
    for (int actionType = 1; actionType >= 0; --actionType) {
        model.SetFlaggingOptions(actionType, 0);
        model.SetFlagsSD(true, false, true, false, 1);
        model.SetFlagsSD(false, true, false, true, 0);
        model.SetFlaggingOptions(actionType, 1);
        model.SetFlagsEC(true, false, true, true);
        model.SetFlagsTL(true, 300, true, 600);
        model.SetFlaggingOptions(actionType, 0);
        model.SetFlagsTR(100, 400);
        model.SetFlagsTR(5, 5);
    }
}

void FlagAndColour(MainModel &model)
{
    for (int row = 0; row < model.rowCount(); row += 3)
        model.ChangeFlag(model.index(row, 0));
    RunRules(model);
    model.SetRowColors({Qt::green, Qt::black, QColor(), Qt::gray, Qt::blue});
    model.ChangeRowColor(1, Qt::red);
    model.ChangeRowColor(-1, Qt::red);
    model.ChangeColorOption(true, true);
    model.ChangeColorOption(false, false);
}

void SortEachColumn(MainProxy &proxy)
{
    for (int column = 1; column < proxy.columnCount(); ++column) {
        proxy.sort(column, Qt::AscendingOrder);
        proxy.sort(column, Qt::DescendingOrder);
    }
    proxy.sort(-1);
}

void WriteMerged(const DataFile &file, int rowsToMerge, bool includeHiddenRows, bool transpose)
{
    QFile output(FuzzEnvironment::Instance().Path(QStringLiteral("merged.txt")));
    if (output.open(QIODevice::WriteOnly | QIODevice::Text))
        file.WriteMergedFile(output, rowsToMerge, includeHiddenRows, transpose, IgnoreMessage);
}

// Hides every other row with their statistics while the section table is
// sorted, then the flagged rows while the raw table is sorted by reaction
// time, then all the rest; writes the unflagged rows left; shows them all
// again.
void HideAndShow(DataFile &file)
{
    MainModel &model = file.GetMainModel();
    QVector<int> everyOther;
    for (int row = 0; row < model.rowCount(); row += 2)
        everyOther.append(row);
    file.GetSectionProxy().sort(0, Qt::DescendingOrder);
    file.HideSelectedRows(everyOther);
    ReadSections(file, false);
    file.GetMainProxy().sort(model.ReactionTimeColumn(), Qt::DescendingOrder);
    file.HideRows(TableContents::RowsFlagged(model, true));
    ReadModel(file.GetMainProxy());
    WriteMerged(file, 1, false, false);
    file.HideRows(TableContents::RowsFlagged(model, false));
    RunRules(model);
    model.ChangeColorOption(true, false);
    file.ShowAllRows();
    file.GetMainProxy().sort(-1);
    file.GetSectionProxy().sort(-1);
}

std::vector<std::unique_ptr<QAbstractItemModelTester>> Watch(DataFile &file)
{
    std::vector<std::unique_ptr<QAbstractItemModelTester>> testers;
    const MainModel &model = file.GetMainModel();
    if (qint64(model.TotalRowCount()) * model.columnCount() > kWatchedCells)
        return testers;
    for (QAbstractItemModel *watched :
         std::initializer_list<QAbstractItemModel *>{&file.GetMainModel(), &file.GetMainProxy(),
                                                     &file.GetSectionModel(), &file.GetSectionProxy()})
        testers.push_back(std::make_unique<QAbstractItemModelTester>(
            watched, QAbstractItemModelTester::FailureReportingMode::Fatal));
    return testers;
}

// The input's own record is also watched by the tester, sorted in every
// way and written transposed; combined records share that code, and go
// only through what depends on how they were put together.
void Exercise(DataFile &file, bool own)
{
    const auto testers = own ? Watch(file) : decltype(Watch(file))();
    ReadModel(file.GetMainModel());
    ReadSections(file, own);
    FlagAndColour(file.GetMainModel());
    ReadModel(file.GetMainProxy());
    if (own)
        SortEachColumn(file.GetMainProxy());
    HideAndShow(file);
    if (own)
        WriteMerged(file, 2, true, true);
}

// A combined record as a selection of the two files in this order makes it.
void ExerciseCombined(const DataFile &first, const DataFile &second)
{
    DataFile combined;
    combined.CopyFrom(first);
    combined.Combine(second);
    Exercise(combined, false);
}

void Open(const QByteArray &bytes)
{
    const QString path = FuzzEnvironment::Instance().Write(QStringLiteral("input.txt"), bytes);
    std::unique_ptr<DataFile> file;
    // What a user waits for: the file checked, read, and both tables shown.
    FuzzEnvironment::WithinTimeLimit(bytes.size(), [&] {
        if (!ValidateDataFiles({path}, IgnoreMessage))
            return;
        file = std::make_unique<DataFile>(path);
        ReadModel(file->GetMainProxy());
        ReadModel(file->GetSectionProxy());
    });
    if (!file)
        return;
    Exercise(*file, true);
    ExerciseCombined(*file, *file);
    const DataFile second(SecondFile());
    ExerciseCombined(*file, second);
    ExerciseCombined(second, *file);
}

} // namespace

ZEPHLANE_FUZZ_TARGET(Open)
