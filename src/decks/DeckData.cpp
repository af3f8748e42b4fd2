// One deck between its section of the game file and page 4.

#include "game/CardEntry.h"
#include "decks/DeckButtons.h"
#include "decks/DeckEvents.h"
#include "game/GameFile.h"
#include "wizard/GamePath.h"
#include "store/ProfileStore.h"
#include "game/Conversions.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

#include <limits>

using namespace Globals;
using store::ReadProfileValue;
using store::WriteProfileValue;
using conv::Val;
using conv::CInt;
using conv::GetField;

void MainForm::LoadDeckData(const QString& section) {
    if (decks::deckEvents().loading)
        decks::deckEvents().loading(section);
    const QString file = GameFilePath();
    backImg->Clear();
    backImg->AddItem(ReadProfileValue(section, QStringLiteral("img_back"), file));
    discardImg->Clear();
    discardImg->AddItem(ReadProfileValue(section, QStringLiteral("img_discard"), file));
    commonList->Clear();
    const qint16 n = CInt(Val(ReadProfileValue(section, QStringLiteral("decksize"), file)));
    CardCounter = 0;
    CardProps.assign(201, QString());
    for (int i = 1; i <= n; ++i) {
        const QString line =
            ReadProfileValue(section, QStringLiteral("card") + QString::number(i), file);
        commonList->AddItem(GetField(line, 1, QStringLiteral(",")));
        ++CardCounter;
        commonList->setItemData(commonList->ListCount() - 1, CardCounter);
        cardProp(CardCounter) = GetField(line, 3, QStringLiteral(","));
    }
    UpdateCardCount();
    DealCrds->setText(ReadProfileValue(section, QStringLiteral("deal"), file));
    if (decks::deckEvents().loaded)
        decks::deckEvents().loaded(section);
}

void MainForm::SaveDeckData(bool isCommonDeck, qint16 deckId) {
    SaveDeckData(isCommonDeck, deckId, GameFilePath());
}

const std::array<QString, 2>& decks::keysEverySaveResets() {
    static const std::array<QString, 2> keys = {QString::fromLatin1(game::key::split),
                                                QString::fromLatin1(game::key::drawFacedown)};
    return keys;
}

void MainForm::SaveDeckData(bool isCommonDeck, qint16 deckId, const QString& file) {
    const store::WriteBatch oneReplace;
    const QString section = game::section::deck(isCommonDeck, deckId, CurrentIndex);
    const int rows = commonList->ListCount();
    WriteProfileValue(section, QStringLiteral("decksize"), QString::number(rows), file);
    WriteProfileValue(section, QStringLiteral("img_back"), backImg->List(0), file);
    WriteProfileValue(section, QStringLiteral("img_discard"), discardImg->List(0), file);
    WriteProfileValue(section, QStringLiteral("deal"), DealCrds->Text(), file);
    for (const QString& key : decks::keysEverySaveResets())
        WriteProfileValue(section, key, QStringLiteral("false"), file);
    for (int i = 1; i <= rows; ++i) {
        QString line = commonList->List(i - 1);
        const qint32 slot = commonList->ItemData(i - 1);
        if (slot >= 0 && !cardProp(slot).isEmpty())
            line += QStringLiteral(",,") + cardProp(slot);
        WriteProfileValue(section, QStringLiteral("card") + QString::number(i), line, file);
    }
    if (decks::deckEvents().saved)
        decks::deckEvents().saved(section, file);
}

void MainForm::UpdateCardCount() {
    // The total stops at the largest count it can hold rather than wrap.
    qint32 total = 0;
    for (int i = 0; i < commonList->ListCount(); ++i) {
        const QString entry = commonList->List(i);
        total += entry.startsWith(QLatin1String("(x")) ? readCardEntry(entry).count : 1;
        total = std::clamp<qint32>(total, std::numeric_limits<qint16>::min(),
                                   std::numeric_limits<qint16>::max());
    }
    commLabel->setCaption(QStringLiteral("Cards: ") + QString::number(commonList->ListCount()) +
                          QStringLiteral(" (tot: ") + QString::number(total) + QLatin1Char(')'));
}
