#include "deckview/PageDeck.h"

#include "decks/CardSlot.h"
#include "game/GameFile.h"
#include "runtime/Runtime.h"
#include "wizard/GamePath.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

#include <algorithm>

namespace deckview {

namespace {

MainForm* page() {
    return deckOnPage() ? mainForm() : nullptr;
}

} // namespace

bool deckOnPage() {
    const MainForm* main = mainForm();
    return main && !main->isUnloaded() && Globals::CurrentFrame == game::page::DecksDetail;
}

QString deckTitle() {
    const MainForm* main = page();
    return main ? main->Wiz[game::page::DecksDetail]->Caption() : QString();
}

QString deckSection() {
    using namespace Globals;
    return game::section::deck(IsCommonDeck != 0, IsCommonDeck ? CurrentIndex : CurrentPlayerDeck,
                               CurrentIndex);
}

QString imageDir() {
    const MainForm* main = mainForm();
    return rt::AppPath() + QLatin1Char('/') + (main ? main->DirName->Text() : QString());
}

QStringList deckColumns() {
    return sheet::propertyColumns(Globals::GameFilePath());
}

int rowCount() {
    const MainForm* main = mainForm();
    return main ? main->commonList->ListCount() : 0;
}

QString rowEntry(int row) {
    const MainForm* main = mainForm();
    return main ? main->commonList->List(row) : QString();
}

QString rowProps(int row) {
    const MainForm* main = mainForm();
    if (!main || row < 0 || row >= main->commonList->ListCount())
        return {};
    const qint32 slot = main->commonList->ItemData(row);
    return slot >= 0 ? Globals::cardProp(slot) : QString();
}

void setRowEntry(int row, const QString& entry) {
    if (MainForm* main = mainForm())
        main->commonList->setList(row, entry);
}

void setRowProps(int row, const QString& props) {
    MainForm* main = mainForm();
    if (!main || row < 0 || row >= main->commonList->ListCount())
        return;
    const qint32 slot = main->commonList->ItemData(row);
    if (slot >= 0)
        Globals::cardProp(slot) = props;
}

void addCard(const QString& image) {
    MainForm* main = mainForm();
    if (!main)
        return;
    main->commonList->AddItem(image);
    main->commonList->setItemData(main->commonList->ListCount() - 1, decks::takeCardSlot());
}

void removeRows(std::vector<int> rows) {
    MainForm* main = mainForm();
    if (!main)
        return;
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    // From the last, so that the rows still to go keep their numbers.
    for (auto it = rows.rbegin(); it != rows.rend(); ++it)
        main->commonList->RemoveItem(*it);
    main->commonList->setListIndex(-1);
}

void recount() {
    if (MainForm* main = mainForm())
        main->UpdateCardCount();
}

sheet::DeckContent pageContent() {
    sheet::DeckContent deck;
    const MainForm* main = mainForm();
    if (!main)
        return deck;
    deck.back = main->backImg->List(0);
    deck.discard = main->discardImg->List(0);
    deck.deal = main->DealCrds->Text();
    const int n = main->commonList->ListCount();
    deck.rows.reserve(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i)
        deck.rows.push_back({rowEntry(i), rowProps(i)});
    return deck;
}

void applyPlan(const sheet::ImportPlan& plan) {
    std::vector<int> removed;
    for (const sheet::RowPlan& row : plan.rows) {
        switch (row.kind) {
        case sheet::RowPlan::Change:
            setRowEntry(row.deckRow, row.entry);
            setRowProps(row.deckRow, row.props);
            break;
        case sheet::RowPlan::Add:
            addCard(row.entry);
            setRowProps(rowCount() - 1, row.props);
            break;
        case sheet::RowPlan::Remove:
            removed.push_back(row.deckRow);
            break;
        case sheet::RowPlan::Unchanged:
            break;
        }
    }
    if (!removed.empty())
        removeRows(std::move(removed));
    recount();
}

} // namespace deckview
