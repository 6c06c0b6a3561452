// SPDX-License-Identifier: GPL-3.0-or-later
#include "titlemarks.h"

namespace {

// Compares '#' repeated `hashes` times with `rest` followed by `restMarks`
// "#", where `rest` is not empty and does not end in "#".
int CompareMarksWithRest(int hashes, QStringView rest)
{
    int firstOther = 0;
    while (rest.at(firstOther) == QLatin1Char('#'))
        ++firstOther;
    if (hashes <= firstOther)
        return -1;
    return QLatin1Char('#').unicode() < rest.at(firstOther).unicode() ? -1 : 1;
}

int CompareMarked(QStringView leftBase, int leftMarks, QStringView rightBase, int rightMarks)
{
    const int common = qMin(leftBase.size(), rightBase.size());
    const int prefix = leftBase.left(common).compare(rightBase.left(common));
    if (prefix != 0)
        return prefix;
    if (leftBase.size() == rightBase.size())
        return leftMarks - rightMarks;
    if (leftBase.size() < rightBase.size())
        return CompareMarksWithRest(leftMarks, rightBase.mid(common));
    return -CompareMarksWithRest(rightMarks, leftBase.mid(common));
}

} // namespace

void TitleRow::Append(const QString &title, int baseSize)
{
    titles.append(title);
    baseSizes.append(baseSize);
}

bool TitleRow::Less(int left, int right) const
{
    return CompareMarked(Base(left), Marks(left), Base(right), Marks(right)) < 0;
}

void RepeatMarks::Add(const QString &title, TitleRow *row)
{
    int hashes = 0;
    while (hashes < title.size() && title.at(title.size() - 1 - hashes) == QLatin1Char('#'))
        ++hashes;
    const int baseSize = title.size() - hashes;
    const QString base = title.left(baseSize);
    const int marks = FreeCount(base, hashes);
    if (marks == hashes) {
        row->Append(title, baseSize);
        return;
    }
    if (!store) {
        store = std::make_shared<TitleMarkStore>();
        row->marks = store;
    }
    row->Append(store->Marked(base, marks), baseSize);
}

// Takes the lowest free count from `count` up. Each taken count points at a
// count to try next, so a long run of equal titles is skipped in one step
// rather than walked again for every repeat.
int RepeatMarks::FreeCount(const QString &base, int count)
{
    QHash<int, int> &next = taken[base];
    QVector<int> passed;
    for (auto found = next.constFind(count); found != next.constEnd(); found = next.constFind(count)) {
        passed.append(count);
        count = found.value();
    }
    for (const int skipped : passed)
        next[skipped] = count + 1;
    next.insert(count, count + 1);
    return count;
}

QString TitleMarkStore::Marked(const QString &base, int marks)
{
    Run &run = runs[base];
    if (marks > run.capacity) {
        const int capacity = qMax(marks, qMin(2 * run.capacity, (1 << 29) - base.size()));
        auto text = std::make_unique<QChar[]>(size_t(base.size()) + size_t(capacity));
        std::copy(base.constBegin(), base.constEnd(), text.get());
        std::fill(text.get() + base.size(), text.get() + base.size() + capacity, QLatin1Char('#'));
        if (run.text)
            replaced.push_back(std::move(run.text));
        run.text = std::move(text);
        run.capacity = capacity;
    }
    return QString::fromRawData(run.text.get(), base.size() + marks);
}
