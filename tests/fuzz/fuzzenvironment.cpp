// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzzenvironment.h"

#include <QFile>
#include <QMessageBox>

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

// QApplication keeps a reference to its argument count.
int argumentCount = 1;
char programName[] = "zephlane-fuzz";
char *arguments[] = {programName, nullptr};

} // namespace

FuzzEnvironment &FuzzEnvironment::Instance()
{
    static FuzzEnvironment environment;
    return environment;
}

FuzzEnvironment::FuzzEnvironment()
    : application(std::make_unique<QApplication>(argumentCount, arguments))
{
    // A timer runs only inside an event loop, and the only loops are those
    // of the program's modal boxes: each is answered as it starts.
    QObject::connect(&boxCloser, &QTimer::timeout, [this] { CloseMessageBoxes(); });
    boxCloser.start(0);
    // The first box loads fonts and style once for the whole run; that is
    // not the time of any input.
    QMessageBox::information(nullptr, QString(), QString());
}

QString FuzzEnvironment::Write(const QString &name, const QByteArray &bytes) const
{
    const QString path = Path(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size()) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        std::abort();
    }
    return path;
}

void FuzzEnvironment::CloseMessageBoxes()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *box = qobject_cast<QMessageBox *>(widget);
        if (box && box->isVisible())
            box->done(QMessageBox::Ok);
    }
}

void FuzzEnvironment::Run(const std::uint8_t *data, std::size_t size, void (*run)(const QByteArray &bytes))
{
    Instance();
    run(QByteArray(reinterpret_cast<const char *>(data), int(size)));
}

// Processor time, not time on the clock: the machine may be shared, and a
// hang is the fuzzer's own timeout to catch.
void FuzzEnvironment::WithinTimeLimit(qint64 size, const std::function<void()> &work)
{
    const std::clock_t start = std::clock();
    work();
    const qint64 milliseconds = qint64(std::clock() - start) * 1000 / CLOCKS_PER_SEC;
    const qint64 kilobytesBegun = size / 1024 + 1;
    if (milliseconds <= kilobytesBegun * 1000)
        return;
    std::fprintf(stderr, "input of %lld bytes took %lld ms of processor time, over a second per kilobyte\n",
                 static_cast<long long>(size), static_cast<long long>(milliseconds));
    std::abort();
}
