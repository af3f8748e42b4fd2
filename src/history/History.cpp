#include "history/History.h"

#include "decks/DeckEvents.h"
#include "game/GameFile.h"
#include "history/DeckState.h"
#include "history/StepNames.h"
#include "runtime/Runtime.h"
#include "wizard/GamePath.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

#include <QDir>
#include <QPointer>

#include <deque>
#include <map>

namespace history {

namespace {

// A step holds the rows it puts back and how many rows of the page they
// replace; taking it back or bringing it again makes the opposite step from
// the page, so each side is held only while it is not on the page.
struct Step {
    QString name;
    QByteArray data;
    qint32 start = 0;
    qint32 replaces = 0;
    bool wholeDeck = false; // across a load: the list is emptied and refilled
    bool silent = false;    // only the slots differ: no step of its own to the user
    bool dealOnly = false;
};

struct Deck {
    std::deque<Step> undo;
    std::vector<Step> redo;
    DeckState seen;      // the page as the last action left it
    DeckState baseline;  // the page as the last load or save of this deck left it
    bool typing = false; // the last step was recorded, so a change of deal joins it
};

struct State {
    QPointer<MainForm> form;
    QString game;
    std::map<QString, Deck> decks;
    QString current; // key of the deck on the page, "" before any load
    QString section;
    QString nextName;
    QString told; // the status text given last, cleared once it no longer holds
};

State& g() {
    static State s;
    return s;
}

QString keyOf(const QString& file, const QString& section) {
    return QDir::cleanPath(file) + QLatin1Char('\n') + section.trimmed().toUpper();
}

QString capitalised(QString s) {
    if (!s.isEmpty())
        s[0] = s[0].toUpper();
    return s;
}

// The wizard as it stands, or nullptr. Another main form (a new game) or
// another game file ends every history, since their decks are gone.
MainForm* wizard() {
    State& s = g();
    MainForm* form = mainForm();
    if (form && form->isUnloaded())
        form = nullptr;
    const QString game = form ? Globals::GameFilePath() : QString();
    if (form != s.form || game != s.game) {
        s.decks.clear();
        s.current.clear();
        s.section.clear();
        s.form = form;
        s.game = game;
    }
    return form;
}

Deck* currentDeck() {
    State& s = g();
    if (s.current.isEmpty())
        return nullptr;
    const auto it = s.decks.find(s.current);
    return it == s.decks.end() ? nullptr : &it->second;
}

void push(Deck& d, Step step) {
    d.undo.push_back(std::move(step));
    while (d.undo.size() > static_cast<size_t>(StepsKept))
        d.undo.pop_front();
}

void record(Deck& d, const DeckState& now, const QString& name) {
    const Window w = differingRows(d.seen.rows, now.rows);
    Step step;
    step.start = w.start;
    step.replaces = w.after;
    step.dealOnly =
        w.before == 0 && w.after == 0 && d.seen.back == now.back && d.seen.discard == now.discard;
    // Typing a number key by key is one change of the deal.
    const bool joins =
        step.dealOnly && name.isEmpty() && d.typing && !d.undo.empty() && d.undo.back().dealOnly;
    bool popped = false;
    if (!joins) {
        step.name = name.isEmpty() ? describeStep(d.seen, now, w) : name;
        step.data = pack(d.seen.rows, w.start, w.before, d.seen);
        push(d, std::move(step));
    } else if (DeckState first; unpack(d.undo.back().data, first) && first.deal == now.deal) {
        // Typed back to what it was: nothing is left to take back.
        d.undo.pop_back();
        popped = true;
    }
    d.redo.clear();
    d.typing = !popped;
    d.seen = now;
}

// Records what the page changed since it was last seen.
void sync() {
    State& s = g();
    const QString name = std::exchange(s.nextName, QString());
    MainForm* form = wizard();
    Deck* d = currentDeck();
    if (!form || !d)
        return;
    DeckState now = readPage(*form);
    if (now != d->seen)
        record(*d, now, name);
}

// Applies `step` to the page and gives the step that takes it back.
bool apply(MainForm& form, Deck& d, const Step& step, Step& opposite) {
    DeckState part;
    const auto rows = static_cast<qint32>(d.seen.rows.size());
    if (!unpack(step.data, part) || step.start < 0 || step.replaces < 0 ||
        step.start > rows - step.replaces)
        return false;
    opposite = step;
    opposite.data = pack(d.seen.rows, step.start, step.replaces, d.seen);
    opposite.replaces = static_cast<qint32>(part.rows.size());
    putOnPage(form, part, step.start, step.replaces, step.wholeDeck);
    d.seen = readPage(form);
    d.typing = false;
    return true;
}

bool modalUp() {
    for (rt::Form* f : rt::loadedForms())
        if (f->isModal())
            return true;
    return false;
}

// The deck that Undo and Redo work on: the one on the page, while nothing waits.
Deck* deckToChange(MainForm*& form) {
    if (modalUp())
        return nullptr;
    sync();
    form = wizard();
    if (!form || Globals::CurrentFrame != game::page::DecksDetail)
        return nullptr;
    return currentDeck();
}

// Moves the last step of `from` to `to` through the page; false when it fails.
template <typename From, typename To> bool move(MainForm& form, Deck& d, From& from, To& to) {
    Step opposite;
    const bool ok = apply(form, d, from.back(), opposite);
    from.pop_back();
    if (ok)
        to.push_back(std::move(opposite));
    return ok;
}

const Step* lastShown(const std::deque<Step>& steps) {
    for (auto it = steps.rbegin(); it != steps.rend(); ++it)
        if (!it->silent)
            return &*it;
    return nullptr;
}

const Step* lastShown(const std::vector<Step>& steps) {
    for (auto it = steps.rbegin(); it != steps.rend(); ++it)
        if (!it->silent)
            return &*it;
    return nullptr;
}

void loading(const QString&) {
    sync();
}

void loaded(const QString& section) {
    State& s = g();
    s.nextName.clear();
    MainForm* form = wizard();
    if (!form)
        return;
    const QString key = keyOf(Globals::GameFilePath(), section);
    QString status;
    if (Deck* left = currentDeck();
        left && !sameContent(left->seen, left->baseline) && s.current != key)
        status = QStringLiteral("%1 was left with unsaved edits: Undo brings them back when it "
                                "comes up again.")
                     .arg(capitalised(deckName(s.section)));
    const DeckState now = readPage(*form);
    const bool known = s.decks.count(key) != 0;
    Deck& d = s.decks[key];
    if (known && d.seen != now) {
        Step step;
        step.wholeDeck = true;
        step.silent = sameContent(d.seen, now);
        step.name = QStringLiteral("Load ") + deckName(section);
        step.replaces = static_cast<qint32>(now.rows.size());
        step.data = pack(d.seen.rows, 0, static_cast<int>(d.seen.rows.size()), d.seen);
        push(d, std::move(step));
        d.redo.clear();
        if (!d.undo.back().silent)
            status = QStringLiteral("%1 came up as the file holds it: Undo brings back its "
                                    "unsaved edits.")
                         .arg(capitalised(deckName(section)));
    }
    d.seen = now;
    d.baseline = now;
    d.typing = false;
    s.current = key;
    s.section = section;
    if (!status.isEmpty() || form->statusLine->Caption() == s.told)
        form->showStatus(status);
    s.told = status;
}

void saved(const QString& section, const QString& file) {
    sync();
    State& s = g();
    if (Deck* d = currentDeck(); d && keyOf(file, section) == s.current)
        d->baseline = d->seen;
}

} // namespace

void install() {
    static bool done = false;
    if (done)
        return;
    done = true;
    decks::DeckEvents& events = decks::deckEvents();
    events.loading = loading;
    events.loaded = loaded;
    events.saved = saved;
    rt::addActionEndHook(sync);
}

void nameNextStep(const QString& name) {
    g().nextName = name;
}

bool canUndo() {
    const Deck* d = currentDeck();
    return d && lastShown(d->undo);
}

bool canRedo() {
    const Deck* d = currentDeck();
    return d && lastShown(d->redo);
}

QString undoName() {
    const Deck* d = currentDeck();
    const Step* step = d ? lastShown(d->undo) : nullptr;
    return step ? step->name : QString();
}

QString redoName() {
    const Deck* d = currentDeck();
    const Step* step = d ? lastShown(d->redo) : nullptr;
    return step ? step->name : QString();
}

bool undo() {
    MainForm* form = nullptr;
    Deck* d = deckToChange(form);
    if (!d || !lastShown(d->undo))
        return false;
    // Steps that only renumbered slots go back with the step before them.
    while (!d->undo.empty() && d->undo.back().silent)
        if (!move(*form, *d, d->undo, d->redo))
            return false;
    return !d->undo.empty() && move(*form, *d, d->undo, d->redo);
}

bool redo() {
    MainForm* form = nullptr;
    Deck* d = deckToChange(form);
    if (!d || !lastShown(d->redo))
        return false;
    while (!d->redo.empty() && d->redo.back().silent)
        if (!move(*form, *d, d->redo, d->undo))
            return false;
    if (d->redo.empty() || !move(*form, *d, d->redo, d->undo))
        return false;
    while (!d->redo.empty() && d->redo.back().silent)
        if (!move(*form, *d, d->redo, d->undo))
            return false;
    return true;
}

QString deckName(const QString& section) {
    game::section::DeckName deck;
    if (!game::section::parseDeck(section, deck))
        return section;
    if (deck.common)
        return QStringLiteral("common deck %1").arg(deck.deck);
    return QStringLiteral("deck %1 of player %2").arg(deck.deck).arg(deck.player);
}

int undoDepth() {
    const Deck* d = currentDeck();
    return d ? static_cast<int>(d->undo.size()) : 0;
}

int redoDepth() {
    const Deck* d = currentDeck();
    return d ? static_cast<int>(d->redo.size()) : 0;
}

std::size_t bytesHeld() {
    std::size_t n = 0;
    const auto add = [&n](const Step& st) {
        n += sizeof(Step) + static_cast<std::size_t>(st.data.capacity()) +
             static_cast<std::size_t>(st.name.capacity()) * 2;
    };
    for (const auto& [key, d] : g().decks) {
        for (const Step& st : d.undo)
            add(st);
        for (const Step& st : d.redo)
            add(st);
    }
    return n;
}

} // namespace history
