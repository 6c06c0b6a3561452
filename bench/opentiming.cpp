// Times one large file's open for bench/compare_open.sh: the bytes alone,
// the model (validation and DataFile with every statistic) or the window
// (OpenFiles until the table is painted). Prints the best time of a few
// runs in seconds and, for the model and the window, the memory the first
// run added at its peak, also as a multiple of the file's size.

#include "benchdata.h"
#include "datafile.h"
#include "datafilevalidator.h"
#include "mainwindow.h"
#include "testenvironment.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTableView>
#include <QTextStream>

#include <cstdlib>
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

void OpenInWindow(MainWindow &window, const QString &path)
{
    window.OpenFiles({path});
    window.findChild<QTableView *>(QStringLiteral("rawDataView"))->viewport()->repaint();
    QApplication::processEvents();
}

} // namespace

int main(int argc, char *argv[])
{
    const TestEnvironment environment;
    QApplication app(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 3 || !QStringList({"bytes", "model", "window"}).contains(arguments[2])) {
        QTextStream(stderr) << "Usage: zephlane-open-timing FILE bytes|model|window [RUNS]\n";
        return 2;
    }
    const QString path = arguments[1];
    const QString mode = arguments[2];
    const int runs = arguments.value(3, QStringLiteral("3")).toInt();
    const double fileBytes = double(QFileInfo(path).size());
    const double before = BenchData::StatusBytes("VmRSS:");
    double best = 0;
    double peak = 0;
    for (int run = 0; run < runs; ++run) {
        std::unique_ptr<MainWindow> window = mode == QLatin1String("window") ? ShownWindow() : nullptr;
        std::unique_ptr<DataFile> file;
        QElapsedTimer timer;
        timer.start();
        if (mode == QLatin1String("bytes"))
            ReadBytes(path);
        else if (mode == QLatin1String("model"))
            file = OpenModel(path);
        else
            OpenInWindow(*window, path);
        const double seconds = timer.nsecsElapsed() / 1e9;
        best = run == 0 ? seconds : qMin(best, seconds);
        if (run == 0)
            peak = BenchData::StatusBytes("VmHWM:") - before;
    }
    QTextStream out(stdout);
    out << mode << "_seconds " << best << "\n";
    if (mode != QLatin1String("bytes"))
        out << mode << "_peak_mb " << peak / 1e6 << "\n" << mode << "_peak_x_file " << peak / fileBytes << "\n";
    return 0;
}
