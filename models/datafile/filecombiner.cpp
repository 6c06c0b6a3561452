// SPDX-License-Identifier: GPL-3.0-or-later
#include "filecombiner.h"

#include "datafile.h"

#include <new>

namespace {

bool failureInjected = false;

} // namespace

FileCombiner::FileCombiner()
    : combined(std::make_unique<DataFile>())
{
}

FileCombiner::~FileCombiner() = default;

// Every cell of every file is copied, which memory may not allow for large
// files; a record only partly combined is let go at once.
bool FileCombiner::Add(const DataFile &file)
{
    if (!combined)
        return false;
    try {
        CombineWith(file);
    } catch (const std::bad_alloc &) {
        combined.reset();
        return false;
    }
    return true;
}

// One name that differs is enough to lose the shared name; later equal
// names do not bring it back.
void FileCombiner::CombineWith(const DataFile &file)
{
    if (!started) {
        combined->CopyFrom(file);
        reference = combined->ExperimentName();
        started = true;
        return;
    }
    if (failureInjected)
        throw std::bad_alloc();
    if (file.ExperimentName() != reference)
        same = false;
    combined->Combine(file);
}

std::unique_ptr<DataFile> FileCombiner::Take()
{
    if (combined && same)
        combined->SetExperimentName(reference);
    return std::move(combined);
}

void FileCombiner::InjectFailure(bool failing)
{
    failureInjected = failing;
}
