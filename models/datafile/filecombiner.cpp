#include "filecombiner.h"

#include "datafile.h"

FileCombiner::FileCombiner()
    : combined(std::make_unique<DataFile>())
{
}

FileCombiner::~FileCombiner() = default;

// One name that differs is enough to lose the shared name; later equal
// names do not bring it back.
void FileCombiner::Add(const DataFile &file)
{
    if (!started) {
        combined->CopyFrom(file);
        reference = combined->ExperimentName();
        started = true;
        return;
    }
    if (file.ExperimentName() != reference)
        same = false;
    combined->Combine(file);
}

std::unique_ptr<DataFile> FileCombiner::Take()
{
    if (same)
        combined->SetExperimentName(reference);
    return std::move(combined);
}
