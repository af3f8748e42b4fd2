#pragma once
// The deck on page 4 as the history sees it, and the packed parts of it that a
// step keeps: only the rows where two states differ, with the deck's images
// and deal, as bytes, so that a thousand steps of a large deck stay small.

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

class MainForm;

namespace history {

struct Row {
    QString entry;
    qint32 slot = 0;
    QString props;
    bool operator==(const Row&) const = default;
};

struct DeckState {
    std::vector<Row> rows;
    QStringList back;
    QStringList discard;
    QString deal;
    bool operator==(const DeckState&) const = default;
};

// What the page holds now: every row with its slot's property text.
DeckState readPage(const MainForm& form);
// The same cards, images and deal, whatever slots the rows were given: what a
// save of either would write.
bool sameContent(const DeckState& a, const DeckState& b);

// Rows [start, start + before) of one list that stand where rows
// [start, start + after) of the other do; the rest is alike.
struct Window {
    int start = 0;
    int before = 0;
    int after = 0;
};
Window differingRows(const std::vector<Row>& a, const std::vector<Row>& b);

// Rows [start, start + count) of `rows` with the images and deal of `extras`.
QByteArray pack(const std::vector<Row>& rows, int start, int count, const DeckState& extras);
// A state holding the packed rows and the images and deal; false for bytes
// that pack did not make.
bool unpack(const QByteArray& data, DeckState& out);

// Puts `part.rows` in place of rows [start, start + replaces) of the page, and
// the images and deal of `part`. `wholeDeck` empties the list first, as a load
// does, so that a dialog open on a row knows its row is gone.
void putOnPage(MainForm& form, const DeckState& part, int start, int replaces, bool wholeDeck);

} // namespace history
