#include "decks/DeckPropForm.h"
#include "game/GameFile.h"

#include "wizard/GamePath.h"
#include "store/ProfileStore.h"
#include "game/Conversions.h"
#include "wizard/Catalogue.h"
#include "wizard/Globals.h"

using namespace Globals;
using store::ReadProfileValue;
using store::WriteProfileValue;
using conv::UCase;

namespace {

// The section of the deck on the decks page, built from the wizard state each time.
QString deckSection() {
    return game::section::deck(IsCommonDeck, IsCommonDeck ? CurrentIndex : CurrentPlayerDeck,
                               CurrentIndex);
}

QString flag(bool value) {
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

AdvancedDeckPropForm::AdvancedDeckPropForm() : rt::Form(wizard::advancedDeckPropFormSpec()) {
    SplitOption = get<rt::CheckBox>(QStringLiteral("SplitOption"));
    ViewDiscardOpt = get<rt::CheckBox>(QStringLiteral("ViewDiscardOpt"));
    DrawFacedownOpt = get<rt::CheckBox>(QStringLiteral("DrawFacedownOpt"));
    resize = get<rt::CheckBox>(QStringLiteral("resize"));
}

void AdvancedDeckPropForm::Form_Load() {
    const QString section = deckSection();
    const QString file = GameFilePath();
    auto stored = [&](const char* key) {
        return UCase(ReadProfileValue(section, QString::fromLatin1(key), file));
    };
    // A common deck is split unless its file says otherwise; a player's deck
    // never opens split.
    SplitOption->setValue(IsCommonDeck && stored("split") != QLatin1String("FALSE") ? 1 : 0);
    // viewDiscard runs against its caption: "false" is the checked box.
    ViewDiscardOpt->setValue(stored("viewDiscard") == QLatin1String("FALSE") ? 1 : 0);
    DrawFacedownOpt->setValue(stored("draw_facedown") == QLatin1String("TRUE") ? 1 : 0);
    resize->setValue(stored("resize") == QLatin1String("TRUE") ? 1 : 0);
}

void AdvancedDeckPropForm::Form_Unload() {
    const store::WriteBatch oneReplace;
    const QString section = deckSection();
    const QString file = GameFilePath();
    WriteProfileValue(section, QStringLiteral("split"), flag(SplitOption->Value() != 0), file);
    WriteProfileValue(section, QStringLiteral("viewDiscard"), flag(ViewDiscardOpt->Value() != 1),
                      file);
    WriteProfileValue(section, QStringLiteral("draw_facedown"), flag(DrawFacedownOpt->Value() == 1),
                      file);
    WriteProfileValue(section, QStringLiteral("resize"), flag(resize->Value() == 1), file);
}
