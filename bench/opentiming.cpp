// SPDX-License-Identifier: GPL-3.0-or-later
// Times one large file in the window for bench/compare_open.sh and
// bench/scaling.sh: reading its bytes alone, the model (validation and
// DataFile with every statistic), the window (OpenFiles until the table is
// painted), a sort by the reaction time through the header once the file
// is open, or hiding every tenth row as a selection and showing all rows
// again, or opening a second file as well and selecting both, which shows
// them combined. Prints the best time of a few runs in seconds and, for the
// model, the window and the combining, the memory that the first run added
// at its peak to the idle program, also as a multiple of the files' size.

#include "benchdata.h"
#include "datafile.h"
#include "datafilevalidator.h"
#include "mainwindow.h"
#include "testenvironment.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QListWidget>
#include <QTableView>
#include <QTest>
#include <QTextStream>

#include <functional>
#include <memory>

namespace {

void ReadBytes(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("Cannot read %s", qPrintable(path));
    const qint64 size = file.size();
    std::unique_ptr<char[]> bytes(new char[size_t(size)]);
    if (file.read(bytes.get(), size) != size)
        qFatal("Short read of %s", qPrintable(path));
}

// Closing is not part of opening: each returns what it opened, and the
// caller lets it go after taking the time.
std::unique_ptr<DataFile> OpenModel(const QString &path)
{
    const auto print = [](const QString &, const QString &text) { qWarning("%s", qPrintable(text)); };
    if (!ValidateDataFiles({path}, print))
        qFatal("%s is not a data file", qPrintable(path));
    auto file = std::make_unique<DataFile>(path);
    if (file->Failure() != ReadFailure::None)
        qFatal("%s could not be read whole (%s)", qPrintable(path), qPrintable(ReadFailureText(file->Failure())));
    return file;
}

// The window is shown and painted before the time starts.
std::unique_ptr<MainWindow> ShownWindow()
{
    auto window = std::make_unique<MainWindow>();
    window->show();
    QApplication::processEvents();
    return window;
}

QTableView *RawView(MainWindow &window)
{
    return window.findChild<QTableView *>(QStringLiteral("rawDataView"));
}

void Paint(MainWindow &window)
{
    RawView(window)->viewport()->repaint();
    QApplication::processEvents();
}

void OpenInWindow(MainWindow &window, const QString &path)
{
    window.OpenFiles({path});
    Paint(window);
}

void ClickHeader(QTableView *view, int column)
{
    view->scrollTo(view->model()->index(0, column));
    QHeaderView *header = view->horizontalHeader();
    const QPoint centre(header->sectionViewportPosition(column) + header->sectionSize(column) / 2, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, centre);
}

int ReactionTimeColumn(QTableView *view)
{
    const QAbstractItemModel *model = view->model();
    for (int column = 0; column < model->columnCount(); ++column) {
        if (model->headerData(column, Qt::Horizontal).toString() == QLatin1String("Reaction\nTime"))
            return column;
    }
    qFatal("The file has no reaction time column");
}

void SelectEveryTenthRow(QTableView *view)
{
    const QAbstractItemModel *model = view->model();
    QItemSelection selection;
    for (int row = 0; row < model->rowCount(); row += 10)
        selection.append(QItemSelectionRange(model->index(row, 0), model->index(row, model->columnCount() - 1)));
    view->selectionModel()->select(selection, QItemSelectionModel::Select);
}

void Trigger(MainWindow &window, const char *action)
{
    window.findChild<QAction *>(QLatin1String(action))->trigger();
    Paint(window);
}

double Seconds(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return timer.nsecsElapsed() / 1e9;
}

struct Timing
{
    QStringList names;
    QVector<double> best;
};

// Selects the first two files of the list, which shows them combined.
void SelectBoth(MainWindow &window)
{
    QListWidget *list = window.findChild<QListWidget *>(QStringLiteral("fileNamesList"));
    list->item(0)->setSelected(true);
    list->item(1)->setSelected(true);
    Paint(window);
}

// One run of `mode` in `window` (shown, with no file) where it needs one:
// the times it takes, by name.
QVector<double> RunOnce(const QString &mode, const QString &path, const QString &other, MainWindow *window,
                        Timing *timing)
{
    if (mode == QLatin1String("bytes")) {
        timing->names = QStringList{"bytes"};
        return {Seconds([&] { ReadBytes(path); })};
    }
    if (mode == QLatin1String("model")) {
        timing->names = QStringList{"model"};
        std::unique_ptr<DataFile> file;
        const double seconds = Seconds([&] { file = OpenModel(path); });
        return {seconds};
    }
    const double open = Seconds([&] { OpenInWindow(*window, path); });
    QTableView *view = RawView(*window);
    if (mode == QLatin1String("sort")) {
        timing->names = QStringList{"sort"};
        const int column = ReactionTimeColumn(view);
        ClickHeader(view, column);
        return {Seconds([&] {
            ClickHeader(view, column);
            Paint(*window);
        })};
    }
    if (mode == QLatin1String("combine")) {
        timing->names = QStringList{"combine"};
        OpenInWindow(*window, other);
        return {Seconds([&] { SelectBoth(*window); })};
    }
    if (mode == QLatin1String("hide")) {
        timing->names = QStringList{"hide", "show"};
        SelectEveryTenthRow(view);
        const double hide = Seconds([&] { Trigger(*window, "actionHide_Selected_Rows"); });
        const double show = Seconds([&] { Trigger(*window, "actionShow_All_Rows"); });
        return {hide, show};
    }
    timing->names = QStringList{"window"};
    return {open};
}

} // namespace

int main(int argc, char *argv[])
{
    const TestEnvironment environment;
    QApplication app(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QStringList modes{"bytes", "model", "window", "sort", "hide", "combine"};
    if (arguments.size() < 3 || !modes.contains(arguments[2]) || (arguments[2] == "combine" && arguments.size() < 5)) {
        QTextStream(stderr) << "Usage: zephlane-open-timing FILE " << modes.join('|') << " [RUNS [OTHER FILE]]\n";
        return 2;
    }
    const QString path = arguments[1];
    const QString mode = arguments[2];
    const int runs = arguments.value(3, QStringLiteral("3")).toInt();
    const QString other = arguments.value(4);
    const double fileBytes = double(QFileInfo(path).size()) + (other.isEmpty() ? 0.0 : double(QFileInfo(other).size()));
    const bool needsWindow = mode != QLatin1String("bytes") && mode != QLatin1String("model");
    Timing timing;
    double peak = 0;
    for (int run = 0; run < runs; ++run) {
        // The idle program, with its window shown where the mode needs one,
        // is what the file's memory is counted from.
        const std::unique_ptr<MainWindow> window = needsWindow ? ShownWindow() : nullptr;
        BenchData::ResetPeak();
        const double before = BenchData::StatusBytes("VmRSS:");
        const QVector<double> seconds = RunOnce(mode, path, other, window.get(), &timing);
        if (run == 0)
            peak = BenchData::StatusBytes("VmHWM:") - before;
        for (int i = 0; i < seconds.size(); ++i) {
            if (run == 0)
                timing.best.append(seconds[i]);
            else
                timing.best[i] = qMin(timing.best[i], seconds[i]);
        }
    }
    QTextStream out(stdout);
    for (int i = 0; i < timing.names.size(); ++i)
        out << timing.names[i] << "_seconds " << timing.best[i] << "\n";
    if (mode != QLatin1String("bytes") && mode != QLatin1String("sort") && mode != QLatin1String("hide"))
        out << mode << "_peak_mb " << peak / 1e6 << "\n" << mode << "_peak_x_file " << peak / fileBytes << "\n";
    return 0;
}
