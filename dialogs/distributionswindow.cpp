// SPDX-License-Identifier: GPL-3.0-or-later
#include "distributionswindow.h"

#include "ui_distributionswindow.h"

#include "analysissession.h"
#include "conditionalaccuracy.h"
#include "distributionplot.h"
#include "fixedpoint.h"
#include "histogrambins.h"
#include "plotexporter.h"
#include "vincentiledeltas.h"
#include "vincentiles.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>

namespace {

const int kWidthDecimals = 2;

// Fills a box with labelled values and selects again the item of the text
// selected before, or the item at `fallback`.
void Refill(QComboBox *box, const QList<QPair<QString, int>> &items, int fallback)
{
    const QSignalBlocker blocker(box);
    const QString selected = box->currentText();
    box->clear();
    for (const auto &item : items)
        box->addItem(item.first, item.second);
    const int index = box->findText(selected);
    box->setCurrentIndex(index >= 0 ? index : std::min(fallback, box->count() - 1));
}

ParticipantChoice ChoiceOf(const QComboBox *box)
{
    ParticipantChoice choice;
    choice.participant = box->currentIndex() >= 0 ? box->currentData().toInt() : ParticipantChoice::kAll;
    return choice;
}

} // namespace

DistributionsWindow::DistributionsWindow(AnalysisSession &session, QWidget *parent)
    : AnalysisWindow(session, parent)
    , ui(std::make_unique<Ui::DistributionsWindow>())
{
    ui->setupUi(this);
    // The controls scroll only up and down, where the screen is too short
    // for them: their column is as wide as they are.
    ui->controlsScroll->setMinimumWidth(ui->controlsPanel->minimumSizeHint().width()
                                        + ui->controlsScroll->verticalScrollBar()->sizeHint().width());
    FitToScreen();
    ui->settingsPanel->SetSession(session, SummarySettingsPanel::View::Plot);
    connect(ui->plotKindBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &DistributionsWindow::Redraw);
    for (QComboBox *box : {ui->participantBox, ui->conditionABox, ui->conditionBBox})
        connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &DistributionsWindow::Redraw);
    connect(ui->binWidthBox, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &DistributionsWindow::Redraw);
    connect(ui->exportButton, &QPushButton::clicked, this, &DistributionsWindow::ExportPlot);
    connect(ui->copyDataButton, &QPushButton::clicked, this, &DistributionsWindow::CopyData);
}

DistributionsWindow::~DistributionsWindow() = default;

// Participants in the table (those left out for accuracy have no trials to
// draw) and the conditions of the result, keeping what was chosen where it
// is still there.
void DistributionsWindow::ShowResult()
{
    const SummaryResult &result = session.Result();
    QList<QPair<QString, int>> participants{{tr("All participants"), ParticipantChoice::kAll}};
    for (int i = 0; i < result.participants.size(); ++i) {
        if (!result.participants[i].lowAccuracy)
            participants.append({result.participants[i].name, i});
    }
    Refill(ui->participantBox, participants, 0);
    QList<QPair<QString, int>> conditions;
    for (int i = 0; i < result.conditions.size(); ++i)
        conditions.append({DistributionPlot::LegendName(result.ConditionLabel(i)), i});
    Refill(ui->conditionABox, conditions, 0);
    Refill(ui->conditionBBox, conditions, 1);
    Redraw();
}

void DistributionsWindow::Redraw()
{
    EnableChoices();
    const auto kind = PlotKind(ui->plotKindBox->currentIndex());
    ui->plotStack->setCurrentIndex(int(kind));
    const SummaryResult &result = session.Result();
    data = [] { return TextTable(); };
    ui->binWidthUsed->clear();
    if (result.participants.isEmpty()) {
        ShowMessage(tr("No participant selected"));
        return;
    }
    const ParticipantChoice choice = ChoiceOf(ui->participantBox);
    switch (kind) {
    case PlotKind::Histogram:
        DrawHistogram(result, choice);
        break;
    case PlotKind::Vincentiles: {
        const Vincentiles vincentiles(result, choice);
        ui->vincentilePlot->Show(vincentiles);
        data = [vincentiles] { return vincentiles.Data(); };
        break;
    }
    case PlotKind::ConditionalAccuracy: {
        const ConditionalAccuracy accuracy(result, choice);
        ui->accuracyPlot->Show(accuracy);
        data = [accuracy] { return accuracy.Data(); };
        break;
    }
    case PlotKind::Delta:
        DrawDelta(result, choice);
        break;
    }
}

void DistributionsWindow::DrawHistogram(const SummaryResult &result, ParticipantChoice choice)
{
    const HistogramBins bins(result, choice, ui->binWidthBox->value());
    ui->histogramGrid->Show(bins);
    if (!bins.IsEmpty())
        ui->binWidthUsed->setText(tr("%1 ms used").arg(FixedPoint::Text(bins.Width(), kWidthDecimals)));
    data = [bins] { return bins.Data(); };
}

void DistributionsWindow::DrawDelta(const SummaryResult &result, ParticipantChoice choice)
{
    if (result.conditions.size() < 2) {
        ShowMessage(tr("The delta plot needs two conditions: tick a condition column"));
        return;
    }
    const int a = ui->conditionABox->currentData().toInt();
    const int b = ui->conditionBBox->currentData().toInt();
    if (a == b) {
        ShowMessage(tr("Choose two different conditions a and b"));
        return;
    }
    const VincentileDeltas deltas(result, Vincentiles(result, choice), a, b);
    ui->deltaPlot->Show(deltas);
    data = [deltas] { return deltas.Data(); };
}

void DistributionsWindow::EnableChoices()
{
    const auto kind = PlotKind(ui->plotKindBox->currentIndex());
    for (QWidget *choice : std::initializer_list<QWidget *>{ui->conditionABox, ui->conditionBBox,
                                                            ui->conditionALabel, ui->conditionBLabel})
        choice->setEnabled(kind == PlotKind::Delta);
    for (QWidget *choice : std::initializer_list<QWidget *>{ui->binWidthBox, ui->binWidthLabel, ui->binWidthUsed})
        choice->setEnabled(kind == PlotKind::Histogram);
}

// Each plot scrolls where the window is smaller than the plot can be read
// at; the figure is the whole plot.
QWidget *DistributionsWindow::PlotInView() const
{
    return qobject_cast<QScrollArea *>(ui->plotStack->currentWidget())->widget();
}

void DistributionsWindow::ShowMessage(const QString &text)
{
    if (auto *plot = qobject_cast<DistributionPlot *>(PlotInView()))
        plot->ShowMessage(text);
    else
        ui->histogramGrid->ShowMessage(text);
}

// The format follows the filter chosen where the name has no suffix of
// its own; the figure keeps its size on screen.
void DistributionsWindow::ExportPlot()
{
    QString filter;
    QString path = QFileDialog::getSaveFileName(this, tr("Export Plot"), QString(),
                                                tr("PNG image (*.png);;SVG drawing (*.svg);;PDF document (*.pdf)"),
                                                &filter);
    if (path.isEmpty())
        return;
    PlotExporter::Format format;
    if (!PlotExporter::FormatOf(path, &format))
        path += filter.mid(filter.indexOf(QLatin1String("(*")) + 2).chopped(1);
    QWidget *figure = PlotInView();
    if (!PlotExporter::Write(figure, path, PlotExporter::ScreenSize(figure), ui->resolutionBox->value())) {
        QMessageBox::warning(this, tr("Export Plot"),
                             tr("The plot could not be written to %1.").arg(QDir::toNativeSeparators(path)));
    }
}

void DistributionsWindow::CopyData()
{
    QApplication::clipboard()->setText(data().TabSeparated());
}
