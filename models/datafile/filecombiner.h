// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <memory>

class DataFile;

// Builds the one record that several files make when they are shown or
// merged as one: the first file added starts it, each further one is
// combined into it, in the order added. Used by the window for a multiple
// selection and by the command-line tool for the files it is given.
class FileCombiner
{
public:
    FileCombiner();
    ~FileCombiner();

    // False when memory ran short: the combiner then holds no record and
    // takes no further file. The file added is never changed.
    bool Add(const DataFile &file);
    // Whether every file added has the first one's experiment name.
    bool SameExperiment() const { return same; }
    // The combined record, under the shared experiment name when all files
    // agree; null after a failed Add. Ends the combiner's work: nothing may
    // be added afterwards.
    std::unique_ptr<DataFile> Take();

    // Makes every later Add of a further file fail as a shortage of memory
    // would, until called with false. For tests of what a failed combining
    // leads to.
    static void InjectFailure(bool failing);

private:
    void CombineWith(const DataFile &file);

    std::unique_ptr<DataFile> combined;
    QString reference;
    bool started = false;
    bool same = true;
};
