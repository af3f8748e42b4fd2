#include "history/StepNames.h"

#include "game/CardEntry.h"

namespace history {

namespace {

QString cards(int n) {
    return n == 1 ? QStringLiteral("1 card") : QStringLiteral("%1 cards").arg(n);
}

std::vector<qint32> slotsOf(const std::vector<Row>& rows, int start, int count) {
    std::vector<qint32> out;
    out.reserve(static_cast<size_t>(count));
    for (int i = start; i < start + count; ++i)
        out.push_back(rows[static_cast<size_t>(i)].slot);
    return out;
}

bool within(const std::vector<qint32>& part, const std::vector<qint32>& whole) {
    size_t j = 0;
    for (qint32 s : whole)
        if (j < part.size() && part[j] == s)
            ++j;
    return j == part.size();
}

} // namespace

QString describeStep(const DeckState& before, const DeckState& after, const Window& w) {
    if (w.before == 0 && w.after == 0) {
        if (before.back != after.back)
            return QStringLiteral("Set back image");
        if (before.discard != after.discard)
            return QStringLiteral("Set discard image");
        return QStringLiteral("Change cards to deal");
    }
    if (after.rows.empty() && before.rows.size() > 1)
        return QStringLiteral("Clear");
    if (w.before == 0)
        return QStringLiteral("Add ") + cards(w.after);
    if (w.after == 0)
        return QStringLiteral("Remove ") + cards(w.before);
    const std::vector<qint32> was = slotsOf(before.rows, w.start, w.before);
    const std::vector<qint32> is = slotsOf(after.rows, w.start, w.after);
    if (was == is) {
        int changed = 0;
        int last = w.start;
        for (int i = w.start; i < w.start + w.before; ++i)
            if (!(before.rows[static_cast<size_t>(i)] == after.rows[static_cast<size_t>(i)])) {
                ++changed;
                last = i;
            }
        // One card changed is what the Card Detail dialog's Update does.
        if (changed == 1)
            return QStringLiteral("Update ") +
                   readCardEntry(after.rows[static_cast<size_t>(last)].entry).name;
        return QStringLiteral("Edit ") + cards(changed);
    }
    if (w.after < w.before && within(is, was))
        return QStringLiteral("Remove ") + cards(w.before - w.after);
    if (w.before < w.after && within(was, is))
        return QStringLiteral("Add ") + cards(w.after - w.before);
    return QStringLiteral("Change cards");
}

} // namespace history
