#include "guidance/GameCheckForm.h"

#include "check/GameChecker.h"
#include "wizard/GamePath.h"
#include "wizard/MainForm.h"

#include <QFileInfo>
#include <QListWidget>

#include <map>

GameCheckForm::Target GameCheckForm::choice;

namespace {

using check::Finding;
using check::Place;
using check::Where;

// Groups in the order of the wizard's pages.
struct Group {
    int order = 0;
    int player = 0;
    int deck = 0;
    int report = 0;
    bool operator<(const Group& o) const {
        return std::tie(order, player, deck, report) <
               std::tie(o.order, o.player, o.deck, o.report);
    }
};

Group groupOf(const Place& p) {
    switch (p.where) {
    case Where::Game:
        return {0};
    case Where::Player:
        return {1, p.player};
    case Where::CommonDeck:
        return {2, 0, p.deck};
    case Where::PlayerDeck:
        return {3, p.player, p.deck};
    case Where::PropertyLists:
        return {4};
    case Where::Report:
        break;
    }
    return {5, 0, 0, p.report};
}

QString groupTitle(const Place& p) {
    switch (p.where) {
    case Where::Game:
        return QStringLiteral("The game");
    case Where::Player:
        return QStringLiteral("Player ") + QString::number(p.player);
    case Where::CommonDeck:
        return QStringLiteral("Common deck ") + QString::number(p.deck);
    case Where::PlayerDeck:
        return QStringLiteral("Deck ") + QString::number(p.deck) + QStringLiteral(" of player ") +
               QString::number(p.player);
    case Where::PropertyLists:
        return QStringLiteral("Property lists");
    case Where::Report:
        break;
    }
    return p.report > 0 ? QStringLiteral("Report ") + QString::number(p.report)
                        : QStringLiteral("Reports");
}

bool inRange(int n) {
    return n >= 1 && n <= 6;
}

// The page that mends a finding, as the index would take the wizard there.
// Sections beyond the counts have no page of their own: their count's page.
GameCheckForm::Target targetOf(const Place& p) {
    using Target = GameCheckForm::Target;
    namespace page = game::page;
    const QString key = p.key.toLower();
    switch (p.where) {
    case Where::Game:
        if (key == QLatin1String(game::key::players))
            return {page::PlayersInfo};
        if (key == QLatin1String(game::key::commonDecks))
            return {page::DecksInfo};
        return {page::GeneralInfo};
    case Where::Player:
        if (!inRange(p.player) || key == QLatin1String(game::key::name))
            return {page::PlayersInfo};
        return {page::PlayersDetail, 0, p.player};
    case Where::CommonDeck:
        return inRange(p.deck) ? Target{page::DecksDetail, game::CommonDecksOwner, p.deck}
                               : Target{page::DecksInfo};
    case Where::PlayerDeck:
        if (!inRange(p.player))
            return {page::PlayersInfo};
        return inRange(p.deck) ? Target{page::DecksDetail, p.player, p.deck}
                               : Target{page::PlayersDetail, 0, p.player};
    case Where::PropertyLists:
        return {page::Properties};
    case Where::Report:
        break;
    }
    return p.report >= 1 && p.report <= game::MaxReports
               ? Target{page::ReportDetail, p.report - 1}
               : Target{page::Properties};
}

QString rowText(const Finding& f) {
    QString text = QStringLiteral("    ") + check::severityName(f.severity);
    if (f.place.line > 0)
        text += QStringLiteral(", line ") + QString::number(f.place.line);
    return text + QStringLiteral(": ") + f.message;
}

} // namespace

const rt::FormSpec& GameCheckForm::formSpec() {
    using rt::Kind;
    static const rt::FormSpec spec{
        "GameCheckForm",
        "Check game",
        9000,
        5400,
        rt::Border::FixedToolWindow,
        true,
        {
            {"unsavedNote", -1, Kind::Label,
             "Some changes on the pages are not saved yet: these findings are about the game as "
             "its file holds it.",
             120, 90, 8760, 420, "", rt::Hidden},
            {"Findings", -1, Kind::ListBox, "", 120, 570, 8760, 4350, ""},
            {"summary", -1, Kind::Label, "", 120, 5010, 8760, 285, "", 0},
        }};
    return spec;
}

GameCheckForm::GameCheckForm() : rt::Form(formSpec()) {
    unsavedNote = get<rt::Label>(QStringLiteral("unsavedNote"));
    Findings = get<rt::ListBox>(QStringLiteral("Findings"));
    summary = get<rt::Label>(QStringLiteral("summary"));
    Findings->DblClick = [this] { Findings_DblClick(); };
    if (auto* list = qobject_cast<QListWidget*>(Findings->widget())) {
        // A long message wraps within the window rather than run off its edge.
        list->setWordWrap(true);
        list->setTextElideMode(Qt::ElideNone);
        list->setResizeMode(QListView::Adjust);
        list->setUniformItemSizes(false);
    }
}

void GameCheckForm::showUnsaved(bool unsaved) {
    // The list takes the note's room when there is nothing to say.
    unsavedNote->setVisible(unsaved);
    const int bottom = Findings->Top() + Findings->Height();
    Findings->setTop(unsaved ? 570 : 120);
    Findings->setHeight(bottom - Findings->Top());
}

void GameCheckForm::Form_Load() {
    choice = {};
    m_targets.clear();
    Findings->Clear();
    const MainForm* main = mainForm();
    if (!main || main->NameTXT->Text().isEmpty()) {
        summary->setCaption(
            QStringLiteral("The game has no name yet, so there is no file to check."));
        return;
    }
    const QString file = Globals::GameFilePath();
    if (!QFileInfo(file).isFile()) {
        summary->setCaption(
            QStringLiteral("%1 has not been saved yet, so there is no file to check.")
                .arg(QFileInfo(file).fileName()));
        return;
    }
    fill(check::checkGame(file));
}

void GameCheckForm::fill(const check::GameReport& report) {
    if (!report.unreadable.isEmpty()) {
        summary->setCaption(QStringLiteral("The game file cannot be read: ") + report.unreadable);
        return;
    }
    std::map<Group, std::vector<const Finding*>> groups;
    for (const Finding& f : report.findings)
        groups[groupOf(f.place)].push_back(&f);
    auto* list = qobject_cast<QListWidget*>(Findings->widget());
    for (const auto& [group, findings] : groups) {
        const Place& first = findings.front()->place;
        Findings->AddItem(groupTitle(first));
        if (list) {
            QFont bold = list->font();
            bold.setBold(true);
            list->item(Findings->ListCount() - 1)->setFont(bold);
        }
        Findings->setItemData(Findings->ListCount() - 1, static_cast<qint32>(m_targets.size()));
        m_targets.push_back(targetOf(first));
        for (const Finding* f : findings) {
            Findings->AddItem(rowText(*f));
            Findings->setItemData(Findings->ListCount() - 1, static_cast<qint32>(m_targets.size()));
            m_targets.push_back(targetOf(f->place));
        }
    }
    const auto count = [&report](check::Severity s, const char* one, const char* many) {
        const int n = report.count(s);
        return QString::number(n) + QLatin1Char(' ') + QLatin1String(n == 1 ? one : many);
    };
    summary->setCaption(
        report.findings.empty()
            ? QStringLiteral("No findings: the game file holds together.")
            : count(check::Severity::Error, "error", "errors") + QStringLiteral(", ") +
                  count(check::Severity::Warning, "warning", "warnings") + QStringLiteral(", ") +
                  count(check::Severity::Note, "note", "notes") +
                  QStringLiteral(". Double-click a line to go to its page."));
}

void GameCheckForm::Findings_DblClick() {
    const int row = Findings->ListIndex();
    if (row < 0)
        return;
    const qint32 at = Findings->ItemData(row);
    if (at < 0 || static_cast<std::size_t>(at) >= m_targets.size())
        return;
    choice = m_targets[static_cast<std::size_t>(at)];
    Unload();
}

void GameCheckForm::Form_KeyPress(int& KeyAscii) {
    if (KeyAscii == 27)
        Unload();
}
