// SPDX-License-Identifier: GPL-3.0-or-later
#include "summarycomputation.h"

#include "celltrimmer.h"
#include "quantile.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace {

const int kCorrect = 0;
const int kIncorrect = 1;
// The scope of a mean and deviation needs more times than this.
const int kLargestUntrimmedScope = 3;

// Joins the cell numbers of the rows with the ids of one more column, so
// that rows share a number only if they agreed before and agree in this
// column too; numbers go out in the order of the rows that first have them.
// Returns how many there are. Rows numbered -1 stay so.
int Renumber(QVector<int> &cells, const QVector<int> &ids, qint64 width, int count)
{
    int next = 0;
    const auto numberOf = [&next](int &number) {
        if (number < 0)
            number = next++;
        return number;
    };
    int *cell = cells.data();
    const int rows = cells.size();
    // A table of every pair while it stays small beside the rows, a hash
    // beyond, as when two columns have a value for nearly every row.
    if (count * width <= 4 * qint64(rows) + 1024) {
        QVector<int> numbers(int(count * width), -1);
        for (int row = 0; row < rows; ++row) {
            if (cell[row] >= 0)
                cell[row] = numberOf(numbers[int(cell[row] * width + ids[row])]);
        }
    } else {
        std::unordered_map<qint64, int> numbers;
        for (int row = 0; row < rows; ++row) {
            if (cell[row] >= 0)
                cell[row] = numberOf(numbers.try_emplace(cell[row] * width + ids[row], -1).first->second);
        }
    }
    return next;
}

// Numbers the cells of one participant's rows from `offset` on, in the
// order of their first rows, and returns the first row of each. A missing
// column (null) has one value in every row and so divides nothing.
QVector<int> NumberCells(const ParticipantTrials &trials, const QVector<const CodedColumn *> &columns, int offset,
                         QVector<int> &cellOf)
{
    int count = 0;
    for (int row = 0; row < trials.RowCount(); ++row) {
        cellOf[row] = trials.IsHidden(row) ? -1 : 0;
        count = std::max(count, cellOf[row] + 1);
    }
    for (const CodedColumn *column : columns) {
        if (column)
            count = Renumber(cellOf, column->ids, column->texts.size(), count);
    }
    QVector<int> firstRows;
    firstRows.reserve(count);
    for (int row = 0; row < trials.RowCount(); ++row) {
        if (cellOf[row] < 0)
            continue;
        if (cellOf[row] == firstRows.size())
            firstRows.append(row);
        cellOf[row] += offset;
    }
    return firstRows;
}

} // namespace

SummaryComputation::SummaryComputation(const SummarySettings &settings)
{
    result.settings = settings;
}

SummaryResult SummaryComputation::Run(const QVector<ParticipantTrials> &participants, const SummarySettings &settings)
{
    SummaryComputation computation(settings);
    computation.result.input = participants;
    for (const ParticipantTrials &trials : participants)
        computation.AddParticipant(trials);
    computation.Trim();
    for (SummaryCell &cell : computation.result.cells)
        computation.Measure(cell);
    for (int participant = 0; participant < participants.size(); ++participant)
        computation.ListExclusions(participant);
    return std::move(computation.result);
}

// The threshold looks at all of a participant's rows not hidden, whatever
// the condition columns; a participant without such rows has no accuracy
// and stays. One left out has no cells, so it takes no part in a pooled
// scope either.
void SummaryComputation::AddParticipant(const ParticipantTrials &trials)
{
    SummaryParticipant participant;
    participant.name = trials.name;
    CountRows(participant, trials);
    const TypedNumber &threshold = result.settings.minAccuracy;
    participant.lowAccuracy = threshold.Given() && participant.rows > 0 && participant.Accuracy() < threshold.value;
    participant.firstCell = result.cells.size();
    result.cellOfRow.append(QVector<int>(trials.RowCount(), -1));
    result.participants.append(participant);
    if (!participant.lowAccuracy) {
        AddCells(result.participants.last(), trials);
        TallyRows(result.participants.last(), trials);
    }
}

void SummaryComputation::CountRows(SummaryParticipant &participant, const ParticipantTrials &trials) const
{
    const QVector<int> slots = trials.CodeSlots();
    for (int row = 0; row < trials.RowCount(); ++row) {
        if (trials.IsHidden(row))
            continue;
        ++participant.rows;
        if (slots[trials.codes.ids[row]] == kCorrect)
            ++participant.correct;
    }
}

void SummaryComputation::AddCells(SummaryParticipant &participant, const ParticipantTrials &trials)
{
    QVector<const CodedColumn *> columns;
    for (const QString &name : result.settings.conditionColumns) {
        const int index = trials.ConditionIndex(name);
        columns.append(index >= 0 ? &trials.conditions[index] : nullptr);
    }
    const QVector<int> firstRows = NumberCells(trials, columns, participant.firstCell, result.cellOfRow.last());
    for (const int row : firstRows) {
        const QStringList values = trials.ConditionValues(result.settings.conditionColumns, row);
        SummaryCell cell;
        cell.participant = result.participants.size() - 1;
        cell.condition = conditionIndex.value(values, result.conditions.size());
        if (cell.condition == result.conditions.size()) {
            conditionIndex.insert(values, cell.condition);
            result.conditions.append(values);
        }
        result.cells.append(cell);
    }
    participant.cellCount = firstRows.size();
}

// Counts the rows of each cell by code and takes the mean of its incorrect
// rows' times.
void SummaryComputation::TallyRows(const SummaryParticipant &participant, const ParticipantTrials &trials)
{
    const QVector<int> slots = trials.CodeSlots();
    const QVector<int> &cellOf = result.cellOfRow.last();
    SummaryCell *cells = result.cells.data();
    QVector<double> errorSums(participant.cellCount, 0.0);
    QVector<int> errorCounts(participant.cellCount, 0);
    for (int row = 0; row < trials.RowCount(); ++row) {
        if (cellOf[row] < 0)
            continue;
        SummaryCell &cell = cells[cellOf[row]];
        const int slot = slots[trials.codes.ids[row]];
        const double time = trials.times[row];
        ++cell.trials;
        if (slot >= 0)
            ++cell.codes[size_t(slot)];
        if (slot == kCorrect && std::isnan(time))
            ++cell.invalidTimes;
        if (slot == kIncorrect && !std::isnan(time) && result.InsideBounds(time)) {
            errorSums[cellOf[row] - participant.firstCell] += time;
            ++errorCounts[cellOf[row] - participant.firstCell];
        }
    }
    for (int i = 0; i < participant.cellCount; ++i) {
        if (errorCounts[i] > 0)
            cells[participant.firstCell + i].errorMean = errorSums[i] / errorCounts[i];
    }
    GatherTimes(participant, trials, slots);
}

// Puts each cell's valid correct times in ascending order, in room made
// for exactly as many as the count found.
void SummaryComputation::GatherTimes(const SummaryParticipant &participant, const ParticipantTrials &trials,
                                     const QVector<int> &slots)
{
    const QVector<int> &cellOf = result.cellOfRow.last();
    SummaryCell *cells = result.cells.data() + participant.firstCell;
    QVector<double *> next(participant.cellCount);
    for (int i = 0; i < participant.cellCount; ++i) {
        cells[i].times.resize(cells[i].Correct() - cells[i].invalidTimes);
        cells[i].keptEnd = cells[i].times.size();
        next[i] = cells[i].times.data();
    }
    for (int row = 0; row < trials.RowCount(); ++row) {
        if (cellOf[row] >= 0 && slots[trials.codes.ids[row]] == kCorrect && !std::isnan(trials.times[row]))
            *next[cellOf[row] - participant.firstCell]++ = trials.times[row];
    }
    for (int i = 0; i < participant.cellCount; ++i)
        std::sort(cells[i].times.begin(), cells[i].times.end());
}

// The absolute bounds go first in every procedure but none, which has none.
void SummaryComputation::Trim()
{
    const SummarySettings &settings = result.settings;
    for (SummaryCell &cell : result.cells)
        CellTrimmer(cell).ApplyBounds(settings.min, settings.max);
    switch (settings.procedure) {
    case SummarySettings::Procedure::None:
        break;
    case SummarySettings::Procedure::Absolute:
        for (SummaryCell &cell : result.cells) {
            cell.lowerCriterion = settings.min.Given() ? settings.min.value : qQNaN();
            cell.upperCriterion = settings.max.Given() ? settings.max.value : qQNaN();
        }
        break;
    case SummarySettings::Procedure::Sd:
        TrimByScope();
        break;
    case SummarySettings::Procedure::Nonrecursive:
        for (SummaryCell &cell : result.cells)
            CellTrimmer(cell).Nonrecursive();
        break;
    case SummarySettings::Procedure::ModifiedRecursive:
        for (SummaryCell &cell : result.cells)
            CellTrimmer(cell).ModifiedRecursive();
        break;
    }
}

// Mean and deviation are taken once over all times of a scope that the
// bounds kept, and every cell of the scope is cut at the same criteria.
void SummaryComputation::TrimByScope()
{
    QVector<SummaryCell> &cells = result.cells;
    const auto keyOf = [this](int index) {
        switch (result.settings.Scope()) {
        case SummarySettings::SdScope::Cell:
            return index;
        case SummarySettings::SdScope::Participant:
            return result.cells[index].participant;
        case SummarySettings::SdScope::Condition:
            return result.cells[index].condition;
        case SummarySettings::SdScope::All:
            break;
        }
        return 0;
    };
    QVector<QVector<double>> pooled(std::max({cells.size(), result.participants.size(), result.conditions.size()}));
    for (int i = 0; i < cells.size(); ++i) {
        QVector<double> &scope = pooled[keyOf(i)];
        scope.reserve(scope.size() + int(cells[i].KeptEnd() - cells[i].KeptBegin()));
        std::copy(cells[i].KeptBegin(), cells[i].KeptEnd(), std::back_inserter(scope));
    }
    QVector<SampleMoments> moments;
    for (const QVector<double> &scope : pooled)
        moments.append(SampleMoments::Of(scope.constData(), scope.constData() + scope.size()));
    const double k = result.settings.SdFactor();
    for (int i = 0; i < cells.size(); ++i) {
        const SampleMoments &scope = moments[keyOf(i)];
        if (scope.n > kLargestUntrimmedScope)
            CellTrimmer(cells[i]).RemoveBeyond(scope.mean - k * scope.sd, scope.mean + k * scope.sd);
    }
}

void SummaryComputation::Measure(SummaryCell &cell) const
{
    cell.kept = SampleMoments::Of(cell.KeptBegin(), cell.KeptEnd());
    cell.median = Quantile::Type7(cell.KeptBegin(), cell.kept.n, 0.5);
}

void SummaryComputation::ListExclusions(int participant)
{
    const ParticipantTrials &trials = result.input.at(participant);
    const QVector<int> slots = trials.CodeSlots();
    const bool lowAccuracy = result.participants.at(participant).lowAccuracy;
    for (int row = 0; row < trials.RowCount(); ++row) {
        if (trials.IsHidden(row))
            result.exclusions.append(ExcludedRow{participant, row, ExclusionReason::Hidden, qQNaN()});
        else if (lowAccuracy)
            result.exclusions.append(ExcludedRow{participant, row, ExclusionReason::LowAccuracy, qQNaN()});
        else if (slots[trials.codes.ids[row]] == kCorrect)
            AddTrimmed(participant, row, trials.times[row], result.cells.at(result.cellOfRow.at(participant)[row]));
    }
}

// A correct row is out when its time is invalid or lies outside the run
// its cell kept; equal times share one fate, so its value tells which.
void SummaryComputation::AddTrimmed(int participant, int row, double time, const SummaryCell &cell)
{
    if (std::isnan(time)) {
        result.exclusions.append(ExcludedRow{participant, row, ExclusionReason::InvalidRt, qQNaN()});
        return;
    }
    if (cell.KeptBegin() != cell.KeptEnd() && time >= *cell.KeptBegin() && time <= cell.KeptEnd()[-1])
        return;
    const int index = int(std::lower_bound(cell.times.begin(), cell.times.end(), time) - cell.times.begin());
    result.exclusions.append(ExcludedRow{participant, row,
                                         index < cell.keptBegin ? ExclusionReason::TooFast : ExclusionReason::TooSlow,
                                         cell.BoundOf(index)});
}
