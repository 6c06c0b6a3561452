// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialextractor.h"

#include "celllist.h"
#include "cellkeys.h"
#include "mainmodel.h"

#include <QHash>
#include <QRegularExpression>

#include <cmath>
#include <string_view>

namespace {

// Codes the cells of one column. Cells of plain ASCII are matched by their
// bytes, so each distinct value is decoded once; others are decoded each
// time, and equal texts still get one id.
class ColumnCoder
{
public:
    explicit ColumnCoder(const QString &emptyText)
        : emptyText(emptyText)
    {
    }

    CodedColumn Code(const CellList &cells, int firstRow, int rowCount)
    {
        column.ids.resize(rowCount);
        for (int row = 0; row < rowCount; ++row)
            column.ids[row] = IdOf(cells, firstRow + row);
        return column;
    }

private:
    int IdOf(const CellList &cells, int row)
    {
        const std::string_view bytes = cells.BytesAt(row);
        const bool plain = CellList::IsPlainAscii(bytes);
        if (plain) {
            const int known = byBytes.Find(bytes);
            if (known >= 0)
                return known;
        }
        QString text = cells.at(row);
        if (text.isEmpty())
            text = emptyText;
        int id = byText.value(text, -1);
        if (id < 0) {
            id = column.texts.size();
            column.texts.append(text);
            byText.insert(text, id);
        }
        if (plain)
            byBytes.Insert(bytes, id);
        return id;
    }

    QString emptyText;
    CodedColumn column;
    QHash<QString, int> byText;
    CellKeys byBytes;
};

CodedColumn UniformColumn(const QString &text, int rowCount)
{
    return CodedColumn{{text}, QVector<int>(rowCount, 0)};
}

void ReadTimes(const CellList &cells, int firstRow, ParticipantTrials &trials)
{
    const int rowCount = trials.times.size();
    trials.timeTexts.Reserve(rowCount, rowCount * 6);
    for (int row = 0; row < rowCount; ++row) {
        bool ok = false;
        const double value = cells.ToDouble(firstRow + row, &ok);
        trials.times[row] = ok && std::isfinite(value) ? value : qQNaN();
        const std::string_view bytes = cells.BytesAt(firstRow + row);
        if (CellList::IsPlainAscii(bytes)) {
            trials.timeTexts.Append(bytes.data(), int(bytes.size()));
        } else {
            const QByteArray text = cells.at(firstRow + row).toUtf8();
            trials.timeTexts.Append(text.constData(), text.size());
        }
    }
}

} // namespace

ParticipantTrials TrialExtractor::Extract(const MainModel &model, int firstRow, int rowCount, const QString &name)
{
    ParticipantTrials trials;
    trials.name = name;
    trials.times = QVector<double>(rowCount, qQNaN());
    if (model.ReactionTimeColumn() >= 0) {
        ReadTimes(model.ColumnCells(model.ReactionTimeColumn()), firstRow, trials);
    } else {
        for (int row = 0; row < rowCount; ++row)
            trials.timeTexts.Append(nullptr, 0);
    }
    trials.codes = model.ErrorCodeColumn() >= 0
                       ? ColumnCoder(QString()).Code(model.ColumnCells(model.ErrorCodeColumn()), firstRow, rowCount)
                       : UniformColumn(QString(), rowCount);
    for (int column = 0; column < model.columnCount(); ++column) {
        const QString conditionName =
            ConditionColumnName(model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        if (conditionName.isEmpty())
            continue;
        trials.conditionNames.append(conditionName);
        trials.conditions.append(
            ColumnCoder(ParticipantTrials::NoName()).Code(model.ColumnCells(column), firstRow, rowCount));
    }
    trials.hidden = HiddenRows(model, firstRow, rowCount);
    return trials;
}

QVector<bool> TrialExtractor::HiddenRows(const MainModel &model, int firstRow, int rowCount)
{
    QVector<bool> hidden;
    for (const int row : model.HiddenFileRows()) {
        if (row < firstRow || row >= firstRow + rowCount)
            continue;
        if (hidden.isEmpty())
            hidden = QVector<bool>(rowCount, false);
        hidden[row - firstRow] = true;
    }
    return hidden;
}

// A repeated title keeps the "#" marks that tell its columns apart, so a
// second "Block Name" column is "Block Name#".
QString TrialExtractor::ConditionColumnName(const QString &title)
{
    static const QRegularExpression fixedTitle(QStringLiteral("^(Block|Trial)\\nName#*$"));
    if (!fixedTitle.match(title).hasMatch() && !title.contains(QLatin1String("(Trial Variable)")))
        return QString();
    return QString(title).remove(QStringLiteral("\n(Trial Variable)")).replace(QLatin1Char('\n'), QLatin1Char(' '));
}
