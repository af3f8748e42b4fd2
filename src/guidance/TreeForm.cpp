// The Game Tree index: the rows are built from the player count on page 1 and
// from what the game file holds, anew each time the form opens.

#include "guidance/TreeForm.h"

#include "game/GameFile.h"

#include "wizard/GamePath.h"
#include "store/ProfileStore.h"
#include "game/Conversions.h"
#include "wizard/Catalogue.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

#include <limits>

using namespace Globals;
using store::ReadProfileValue;
using conv::Val;
using conv::CInt;
using conv::GetField;
namespace page = game::page;

namespace {

constexpr qint16 NotSet = 0;

QString num(int n) {
    return QString::number(n);
}

} // namespace

TreeForm::TreeForm() : rt::Form(wizard::treeFormSpec()), TreeRefs(50) {
    GameList = get<rt::ListBox>(QStringLiteral("GameList"));
    GameList->DblClick = [this] { GameList_DblClick(); };
}

void TreeForm::addPageRow(const QString& text, qint16 frame) {
    GameList->AddItem(text);
    GameList->setItemData(GameList->ListCount() - 1, frame);
}

bool TreeForm::addRecordRow(const QString& text, const TreeRef& ref) {
    // ItemData -c names record c - 1, so the count itself must stay a 16-bit number.
    if (TreeRefCount == std::numeric_limits<qint16>::max())
        return false;
    GameList->AddItem(text);
    ++TreeRefCount;
    GameList->setItemData(GameList->ListCount() - 1, -TreeRefCount);
    if (static_cast<size_t>(TreeRefCount) > TreeRefs.size())
        TreeRefs.resize(static_cast<size_t>(TreeRefCount));
    TreeRefs[static_cast<size_t>(TreeRefCount - 1)] = ref;
    return true;
}

void TreeForm::Form_Load() {
    TreeFrame = page::None;
    TreeRefCount = 0;
    GameList->Clear();
    MainForm* main = mainForm();
    const QString file = GameFilePath();

    addPageRow(QStringLiteral("Game Description"), page::GeneralInfo);
    addPageRow(QStringLiteral("Players Panel"), page::PlayersInfo);
    const qint16 players = main ? CInt(Val(main->PlNum->Text())) : 0;
    bool room = true;
    for (int i = 1; room && i <= players; ++i) {
        room = addRecordRow(QStringLiteral("  *** Player ") + num(i) + QStringLiteral(" Data "),
                            {static_cast<qint16>(i), NotSet, page::PlayersDetail});
        const qint16 decks = CInt(Val(
            ReadProfileValue(game::section::player(i), QLatin1String(game::key::decks), file)));
        for (int j = 1; room && j <= decks; ++j)
            room = addRecordRow(QStringLiteral("           deck #") + num(j),
                                {static_cast<qint16>(i), static_cast<qint16>(j), page::DecksDetail});
    }

    addPageRow(QStringLiteral("Common Decks Panel"), page::DecksInfo);
    const qint16 common =
        CInt(Val(ReadProfileValue(game::section::game(), QLatin1String(game::key::commonDecks), file)));
    for (int k = 1; room && k <= common; ++k)
        room = addRecordRow(QStringLiteral("  *** deck #") + num(k),
                            {game::CommonDecksOwner, static_cast<qint16>(k), page::DecksDetail});

    addPageRow(QStringLiteral("Properties Panel"), page::Properties);
    const QString reports = game::section::reports();
    const qint16 count = CInt(Val(ReadProfileValue(reports, QLatin1String(game::key::numReports), file)));
    for (int r = 1; room && r <= count; ++r) {
        const QString report = ReadProfileValue(reports, game::key::report(r), file);
        room = addRecordRow(QStringLiteral("  *** ") + GetField(report, 1, QStringLiteral(",")),
                            {NotSet, static_cast<qint16>(r - 1), page::ReportDetail});
    }
}

void TreeForm::GameList_DblClick() {
    const int row = GameList->ListIndex();
    if (row < 0 || row >= GameList->ListCount())
        return; // a double click beside the rows chooses nothing
    const qint32 d = GameList->ItemData(row);
    if (d >= 0) {
        TreeFrame = d;
    } else {
        const TreeRef& ref = TreeRefs[static_cast<size_t>(-1 - d)];
        TreeFrame = ref.Frame;
        if (ref.Frame == page::PlayersDetail) {
            TreeIndex2 = ref.Owner;
        } else if (ref.Frame == page::DecksDetail) {
            TreeIndex1 = ref.Owner;
            TreeIndex2 = ref.Item;
        } else if (ref.Frame == page::ReportDetail) {
            TreeIndex1 = ref.Item;
        }
    }
    Unload();
}
