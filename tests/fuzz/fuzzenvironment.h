// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "testenvironment.h"

#include <QApplication>
#include <QByteArray>
#include <QString>
#include <QTemporaryDir>
#include <QTimer>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

// What every fuzz target runs the program's code in: an offscreen
// application with a temporary home, a directory for the files that carry
// an input, message boxes answered as soon as they open, and the time limit
// of what a user waits for. Made once, by the first call of Instance(), and
// kept for the life of the process.
class FuzzEnvironment
{
public:
    static FuzzEnvironment &Instance();

    // Writes `bytes` to a file of that name in the input directory.
    QString Write(const QString &name, const QByteArray &bytes) const;
    QString Path(const QString &name) const { return inputs.filePath(name); }

    static void Run(const std::uint8_t *data, std::size_t size, void (*run)(const QByteArray &bytes));
    // Runs `work` for an input of `size` bytes; when it takes more than a
    // second of processor time for each kilobyte begun, the process aborts
    // so that the fuzzer keeps the input as a fault.
    static void WithinTimeLimit(qint64 size, const std::function<void()> &work);

private:
    FuzzEnvironment();
    void CloseMessageBoxes();

    TestEnvironment home;
    std::unique_ptr<QApplication> application;
    QTemporaryDir inputs;
    QTimer boxCloser;
};

// The two functions that libFuzzer, or the replay of a corpus, calls for a
// target whose inputs go to `run`.
#define ZEPHLANE_FUZZ_TARGET(run)                                                                  \
    extern "C" int LLVMFuzzerInitialize(int *, char ***)                                           \
    {                                                                                              \
        FuzzEnvironment::Instance();                                                               \
        return 0;                                                                                  \
    }                                                                                              \
    extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)              \
    {                                                                                              \
        FuzzEnvironment::Run(data, size, run);                                                     \
        return 0;                                                                                  \
    }
