#include "history/DeckState.h"

#include "wizard/Globals.h"
#include "wizard/MainForm.h"

#include <QListWidget>
#include <QSignalBlocker>

#include <algorithm>
#include <limits>

namespace history {

namespace {

constexpr char Magic = 'D';

void putNumber(QByteArray& out, quint64 n) {
    while (n >= 0x80) {
        out.append(static_cast<char>((n & 0x7f) | 0x80));
        n >>= 7;
    }
    out.append(static_cast<char>(n));
}

void putText(QByteArray& out, const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    putNumber(out, static_cast<quint64>(utf8.size()));
    out.append(utf8);
}

void putList(QByteArray& out, const QStringList& list) {
    putNumber(out, static_cast<quint64>(list.size()));
    for (const QString& s : list)
        putText(out, s);
}

// Reads what the put functions wrote, refusing anything that runs past the end.
struct Reader {
    const QByteArray& data;
    qsizetype pos = 0;
    bool ok = true;

    quint64 number() {
        quint64 n = 0;
        for (int shift = 0; shift < 64; shift += 7) {
            if (pos >= data.size()) {
                ok = false;
                return 0;
            }
            const auto byte = static_cast<unsigned char>(data[pos++]);
            n |= static_cast<quint64>(byte & 0x7f) << shift;
            if (!(byte & 0x80))
                return n;
        }
        ok = false;
        return 0;
    }
    QString text() {
        const quint64 n = number();
        if (!ok || n > static_cast<quint64>(data.size() - pos)) {
            ok = false;
            return {};
        }
        const QString s = QString::fromUtf8(data.constData() + pos, static_cast<qsizetype>(n));
        pos += static_cast<qsizetype>(n);
        return s;
    }
    QStringList list() {
        QStringList out;
        const quint64 n = number();
        for (quint64 i = 0; ok && i < n; ++i)
            out << text();
        return out;
    }
};

quint64 zigzag(qint32 v) {
    return (static_cast<quint64>(static_cast<quint32>(v)) << 1) ^ (v < 0 ? ~quint64(0) : 0);
}

qint32 unzigzag(quint64 v) {
    return static_cast<qint32>(static_cast<qint64>(v >> 1) ^ -static_cast<qint64>(v & 1));
}

QString slotText(qint32 slot) {
    const auto& props = Globals::CardProps;
    return slot >= 0 && static_cast<size_t>(slot) < props.size() ? props[static_cast<size_t>(slot)]
                                                                 : QString();
}

void setRows(rt::ListBox* list, const QStringList& rows) {
    QStringList now;
    for (int i = 0; i < list->ListCount(); ++i)
        now << list->List(i);
    if (now == rows)
        return;
    list->Clear();
    for (const QString& r : rows)
        list->AddItem(r);
}

QListWidgetItem* newRow(const Row& row) {
    auto* item = new QListWidgetItem(row.entry);
    item->setData(Qt::UserRole, row.slot);
    return item;
}

// Every slot on the page stays below what the counter hands out next, also
// when the rows came back from before a load that restarted the counter.
void keepCounterAbove(const std::vector<Row>& rows) {
    using namespace Globals;
    constexpr qint32 limit = std::numeric_limits<qint16>::max();
    qint32 top = 0;
    for (const Row& r : rows)
        top = std::max(top, r.slot);
    if (top > CardCounter)
        CardCounter = static_cast<qint16>(std::min(top, limit));
}

} // namespace

DeckState readPage(const MainForm& form) {
    DeckState s;
    const int n = form.commonList->ListCount();
    s.rows.reserve(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        const qint32 slot = form.commonList->ItemData(i);
        s.rows.push_back({form.commonList->List(i), slot, slotText(slot)});
    }
    for (int i = 0; i < form.backImg->ListCount(); ++i)
        s.back << form.backImg->List(i);
    for (int i = 0; i < form.discardImg->ListCount(); ++i)
        s.discard << form.discardImg->List(i);
    s.deal = form.DealCrds->Text();
    return s;
}

bool sameContent(const DeckState& a, const DeckState& b) {
    // A save writes row 0 of each image list, "" for an empty list.
    if (a.back.value(0) != b.back.value(0) || a.discard.value(0) != b.discard.value(0) ||
        a.deal != b.deal || a.rows.size() != b.rows.size())
        return false;
    return std::equal(a.rows.begin(), a.rows.end(), b.rows.begin(), [](const Row& x, const Row& y) {
        return x.entry == y.entry && x.props == y.props;
    });
}

Window differingRows(const std::vector<Row>& a, const std::vector<Row>& b) {
    const size_t shorter = std::min(a.size(), b.size());
    size_t head = 0;
    while (head < shorter && a[head] == b[head])
        ++head;
    size_t tail = 0;
    while (tail < shorter - head && a[a.size() - 1 - tail] == b[b.size() - 1 - tail])
        ++tail;
    return {static_cast<int>(head), static_cast<int>(a.size() - head - tail),
            static_cast<int>(b.size() - head - tail)};
}

QByteArray pack(const std::vector<Row>& rows, int start, int count, const DeckState& extras) {
    QByteArray out;
    out.append(Magic);
    putNumber(out, static_cast<quint64>(count));
    for (int i = start; i < start + count; ++i) {
        const Row& r = rows[static_cast<size_t>(i)];
        putText(out, r.entry);
        putNumber(out, zigzag(r.slot));
        putText(out, r.props);
    }
    putList(out, extras.back);
    putList(out, extras.discard);
    putText(out, extras.deal);
    out.squeeze();
    return out;
}

bool unpack(const QByteArray& data, DeckState& out) {
    out = {};
    if (data.isEmpty() || data[0] != Magic)
        return false;
    Reader in{data, 1};
    const quint64 n = in.number();
    // Each row takes three bytes at least, so a count past that is no step's.
    if (!in.ok || n > static_cast<quint64>(data.size()))
        return false;
    out.rows.reserve(static_cast<size_t>(n));
    for (quint64 i = 0; in.ok && i < n; ++i) {
        Row r;
        r.entry = in.text();
        r.slot = unzigzag(in.number());
        r.props = in.text();
        out.rows.push_back(std::move(r));
    }
    out.back = in.list();
    out.discard = in.list();
    out.deal = in.text();
    return in.ok && in.pos == data.size();
}

void putOnPage(MainForm& form, const DeckState& part, int start, int replaces, bool wholeDeck) {
    auto* list = qobject_cast<QListWidget*>(form.commonList->widget());
    if (!list)
        return;
    const QSignalBlocker block(list);
    if (wholeDeck) {
        list->clear();
        for (const Row& r : part.rows)
            list->addItem(newRow(r));
    } else {
        bool sameSlots = static_cast<int>(part.rows.size()) == replaces;
        for (int i = 0; sameSlots && i < replaces; ++i)
            sameSlots =
                form.commonList->ItemData(start + i) == part.rows[static_cast<size_t>(i)].slot;
        if (sameSlots) {
            // The same cards with other texts: rows keep their place and the
            // selection, and a dialog open on one of them still finds it.
            for (int i = 0; i < replaces; ++i)
                if (form.commonList->List(start + i) != part.rows[static_cast<size_t>(i)].entry)
                    form.commonList->setList(start + i, part.rows[static_cast<size_t>(i)].entry);
        } else {
            for (int i = start + replaces - 1; i >= start; --i)
                delete list->takeItem(i);
            for (size_t i = 0; i < part.rows.size(); ++i)
                list->insertItem(start + static_cast<int>(i), newRow(part.rows[i]));
            // A row left selected would be the next "<-" press's, unseen.
            form.commonList->setListIndex(-1);
        }
    }
    for (const Row& r : part.rows)
        if (r.slot >= 0)
            Globals::cardProp(r.slot) = r.props;
    keepCounterAbove(part.rows);
    setRows(form.backImg, part.back);
    setRows(form.discardImg, part.discard);
    if (form.DealCrds->Text() != part.deal)
        form.DealCrds->setText(part.deal);
    form.UpdateCardCount();
}

} // namespace history
