#include "deckview/DealForm.h"

#include "deal/Shuffle.h"
#include "deckview/DealModels.h"
#include "deckview/PageDeck.h"
#include "images/Preview.h"
#include "runtime/Runtime.h"
#include "runtime/Table.h"
#include "sheet/Csv.h"
#include "wizard/MainForm.h"

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QSet>
#include <QSortFilterProxyModel>
#include <QTableView>

#include <algorithm>
#include <map>

namespace deckview {

namespace {
constexpr int Margin = 120;
constexpr int SideWidth = 2040; // the pile and the discard beside the hands
constexpr int PictureW = 960;
constexpr int PictureH = 1350;

QString noDeck() {
    return QStringLiteral("No deck is open: the deal works on the deck of the Decks Detail page.");
}
} // namespace

const rt::FormSpec& DealForm::formSpec() {
    using rt::Kind;
    static const rt::FormSpec spec{
        "DealForm",
        "Try the Deal",
        10800,
        8400,
        rt::Border::Sizable,
        false,
        {
            {"deckLabel", -1, Kind::Label, "", Margin, 90, 10560, 285, "", rt::ArialBold},
            {"SeedLbl", -1, Kind::Label, "Seed", Margin, 480, 540, 255, ""},
            {"SeedBox", -1, Kind::TextBox, "", 660, 450, 1800, 315, ""},
            {"DealBtn", -1, Kind::CommandButton, "Deal", 2580, 420, 1100, 375, "",
             rt::DefaultButton},
            {"ShuffleBtn", -1, Kind::CommandButton, "New shuffle", 3780, 420, 1400, 375, ""},
            {"HandsLbl", -1, Kind::Label, "Hands", 5400, 480, 700, 255, ""},
            {"HandsBox", -1, Kind::TextBox, "", 6120, 450, 600, 315, ""},
            {"HandSizeLbl", -1, Kind::Label, "Cards a hand", 6900, 480, 1300, 255, ""},
            {"HandSizeBox", -1, Kind::TextBox, "", 8220, 450, 700, 315, ""},
            {"hands", -1, Kind::Table, "", Margin, 900, 8400, 2700, ""},
            {"PileImg", -1, Kind::PictureBox, "", 8640, 900, PictureW, PictureH, ""},
            {"DiscardImg", -1, Kind::PictureBox, "", 9720, 900, PictureW, PictureH, ""},
            {"PileLabel", -1, Kind::Label, "", 8640, 2340, SideWidth, 255, ""},
            {"DiscardLabel", -1, Kind::Label, "", 8640, 2640, SideWidth, 255, ""},
            {"HandChoice", -1, Kind::ComboBox, "", Margin, 3720, 1500, 315, "", rt::ListOnly},
            {"DrawBtn", -1, Kind::CommandButton, "Draw", 1740, 3690, 1100, 375, ""},
            {"DiscardBtn", -1, Kind::CommandButton, "Discard selected", 2940, 3690, 1900, 375, ""},
            {"Notes", -1, Kind::Label, "", Margin, 4200, 10560, 900, ""},
            {"AtLeastLbl", -1, Kind::Label, "At least", Margin, 5250, 800, 255, ""},
            {"AtLeastBox", -1, Kind::TextBox, "1", 960, 5220, 600, 315, ""},
            {"GroupBtn", -1, Kind::CommandButton, "Odds of the selection as one group", 1680, 5190,
             3000, 375, ""},
            {"CopyBtn", -1, Kind::CommandButton, "Copy as CSV", 9180, 5190, 1500, 375, ""},
            {"odds", -1, Kind::Table, "", Margin, 5700, 10560, 2580, ""},
        }};
    return spec;
}

DealForm::DealForm()
    : rt::Form(formSpec()), m_hands(new HandsModel(this)), m_odds(new OddsModel(this)),
      m_sorted(new QSortFilterProxyModel(this)) {
    deckLabel = get<rt::Label>(QStringLiteral("deckLabel"));
    SeedBox = get<rt::TextBox>(QStringLiteral("SeedBox"));
    DealBtn = get<rt::CommandButton>(QStringLiteral("DealBtn"));
    ShuffleBtn = get<rt::CommandButton>(QStringLiteral("ShuffleBtn"));
    HandsBox = get<rt::TextBox>(QStringLiteral("HandsBox"));
    HandSizeBox = get<rt::TextBox>(QStringLiteral("HandSizeBox"));
    hands = get<rt::Table>(QStringLiteral("hands"));
    PileImg = get<rt::PictureBox>(QStringLiteral("PileImg"));
    PileLabel = get<rt::Label>(QStringLiteral("PileLabel"));
    DiscardImg = get<rt::PictureBox>(QStringLiteral("DiscardImg"));
    DiscardLabel = get<rt::Label>(QStringLiteral("DiscardLabel"));
    HandChoice = get<rt::ComboBox>(QStringLiteral("HandChoice"));
    DrawBtn = get<rt::CommandButton>(QStringLiteral("DrawBtn"));
    DiscardBtn = get<rt::CommandButton>(QStringLiteral("DiscardBtn"));
    Notes = get<rt::Label>(QStringLiteral("Notes"));
    AtLeastBox = get<rt::TextBox>(QStringLiteral("AtLeastBox"));
    GroupBtn = get<rt::CommandButton>(QStringLiteral("GroupBtn"));
    CopyBtn = get<rt::CommandButton>(QStringLiteral("CopyBtn"));
    odds = get<rt::Table>(QStringLiteral("odds"));

    DealBtn->Click = [this] { DealBtn_Click(); };
    ShuffleBtn->Click = [this] { ShuffleBtn_Click(); };
    DrawBtn->Click = [this] { DrawBtn_Click(); };
    DiscardBtn->Click = [this] { DiscardBtn_Click(); };
    GroupBtn->Click = [this] { GroupBtn_Click(); };
    CopyBtn->Click = [this] { CopyBtn_Click(); };
    HandSizeBox->Change = [this] { computeOdds(); };
    AtLeastBox->Change = [this] { computeOdds(); };

    hands->setModel(m_hands);
    m_sorted->setSourceModel(m_odds);
    m_sorted->setSortRole(OddsModel::SortRole);
    odds->setModel(m_sorted);
    if (QTableView* view = odds->view()) {
        view->setSortingEnabled(true);
        view->sortByColumn(-1,
                           Qt::AscendingOrder); // the table's own order until a header is clicked
        view->horizontalHeader()->setStretchLastSection(true);
    }
    if (QTableView* view = hands->view()) {
        view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        view->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    }
    connect(&images::PreviewCache::instance(), &images::PreviewCache::ready, this,
            [this] { showPictures(); });
}

void DealForm::Form_Load() {
    if (const MainForm* main = mainForm()) {
        HandsBox->setText(main->PlNum->Text());
        HandSizeBox->setText(main->DealCrds->Text());
    }
    const qreal dpr = devicePixelRatioF();
    m_hands->setThumbSize(QSize(40, 60) * dpr, dpr);
    if (QTableView* view = hands->view()) {
        view->setIconSize(QSize(40, 60));
        view->verticalHeader()->setDefaultSectionSize(66);
        view->horizontalHeader()->setDefaultSectionSize(std::max(
            120, view->fontMetrics().horizontalAdvance(QStringLiteral("knight00.bmp")) + 56));
    }
    layoutControls();
    DealBtn_Click();
}

void DealForm::follow() {
    const sheet::DeckContent now = deckOnPage() ? pageContent() : sheet::DeckContent{};
    const auto same = [](const sheet::DeckContent& a, const sheet::DeckContent& b) {
        if (a.back != b.back || a.discard != b.discard || a.rows.size() != b.rows.size())
            return false;
        for (std::size_t i = 0; i < a.rows.size(); ++i)
            if (a.rows[i].entry != b.rows[i].entry || a.rows[i].props != b.rows[i].props)
                return false;
        return true;
    };
    if (same(now, m_content))
        return;
    m_stale = true;
    computeOdds();
}

void DealForm::computeOdds() {
    m_content = deckOnPage() ? pageContent() : sheet::DeckContent{};
    m_oddsNotes.clear();
    const deal::Pile pile = deal::pileOf(m_content);
    const int size = deal::readHandSize(HandSizeBox->Text(), m_oddsNotes);
    const qint64 k = deal::readAtLeast(AtLeastBox->Text(), m_oddsNotes);
    m_odds->compute(pile, deckOnPage() ? deckColumns() : QStringList(), size, k);
    // The pile's own notes stand with the deal; these are the table's alone.
    for (const QString& note : m_odds->table().notes)
        if (!pile.notes.contains(note) && !m_oddsNotes.contains(note))
            m_oddsNotes.append(note);
    showNotes();
}

void DealForm::DealBtn_Click() {
    m_action.clear();
    m_stale = false;
    if (SeedBox->Text().trimmed().isEmpty())
        SeedBox->setText(QString::number(deal::freshSeed()));
    const deal::Seed seed = deal::readSeed(SeedBox->Text());
    m_dealNotes.clear();
    if (!deckOnPage())
        m_dealNotes.append(noDeck());
    const sheet::DeckContent content = deckOnPage() ? pageContent() : sheet::DeckContent{};
    deal::Pile pile = deal::pileOf(content);
    const int handCount = deal::readHands(HandsBox->Text(), m_dealNotes);
    const int size = deal::readHandSize(HandSizeBox->Text(), m_dealNotes);
    if (!seed.note.isEmpty())
        m_dealNotes.append(seed.note);
    deal::Deal dealt(pile, handCount, size, seed.value);
    m_dealNotes = pile.notes + m_dealNotes + dealt.notes();
    // A clear word for every picture that is not there, once each.
    QSet<QString> missing;
    for (const auto& hand : dealt.hands())
        for (int row : hand) {
            const QString& name = pile.rows[static_cast<std::size_t>(row)].name;
            if (!missing.contains(name) &&
                !QFileInfo(imageDir() + QLatin1Char('/') + name).isFile()) {
                missing.insert(name);
                m_dealNotes.append(
                    QStringLiteral("The picture %1 is not in the game's folder.").arg(name));
            }
        }
    m_hands->reset(std::move(pile), std::move(dealt), imageDir());
    m_content = content;
    HandChoice->Clear();
    for (int h = 1; h <= handCount; ++h)
        HandChoice->AddItem(QStringLiteral("Hand %1").arg(h));
    HandChoice->setListIndex(0);
    computeOdds();
    showTable();
}

void DealForm::ShuffleBtn_Click() {
    SeedBox->setText(QString::number(deal::freshSeed()));
    DealBtn_Click();
}

void DealForm::DrawBtn_Click() {
    m_action.clear();
    const int hand = std::max(HandChoice->ListIndex(), 0);
    if (!m_hands->draw(hand))
        m_action = QStringLiteral("The pile is empty: there is no card to draw.");
    showTable();
}

void DealForm::DiscardBtn_Click() {
    m_action.clear();
    QTableView* view = hands->view();
    if (!view || !view->selectionModel())
        return;
    // From the last card of each hand, so that the others keep their places.
    std::map<int, std::vector<int>, std::less<>> chosen;
    for (const QModelIndex& index : view->selectionModel()->selectedIndexes())
        chosen[index.row()].push_back(index.column());
    bool any = false;
    for (auto& [hand, positions] : chosen) {
        std::sort(positions.rbegin(), positions.rend());
        for (int position : positions)
            any = m_hands->discard(hand, position) || any;
    }
    if (!any)
        m_action = QStringLiteral("Select cards of the hands to discard them.");
    showTable();
}

void DealForm::GroupBtn_Click() {
    m_action.clear();
    std::vector<int> rows;
    if (QTableView* view = odds->view(); view && view->selectionModel())
        for (const QModelIndex& index : view->selectionModel()->selectedIndexes())
            rows.push_back(m_sorted->mapToSource(index).row());
    if (rows.empty())
        m_action = QStringLiteral("Select rows of the odds to count them as one group.");
    else
        m_odds->addGroup(rows);
    showNotes();
}

void DealForm::CopyBtn_Click() {
    std::vector<QStringList> rows;
    for (int r = 0; r < odds->Rows(); ++r) {
        QStringList cells;
        for (int c = 0; c < odds->Cols(); ++c)
            cells.append(odds->Cell(r, c));
        rows.push_back(cells);
    }
    const QByteArray csv = sheet::writeCsv(deal::oddsHeader(m_odds->table()), rows);
    if (QClipboard* clipboard = QGuiApplication::clipboard())
        clipboard->setText(QString::fromUtf8(csv));
}

void DealForm::showTable() {
    const deal::Deal& dealt = m_hands->dealt();
    deckLabel->setCaption(deckOnPage() ? deckTitle() + QStringLiteral("  -  seed ") +
                                             QString::number(dealt.seed())
                                       : QStringLiteral("No deck"));
    PileLabel->setCaption(
        QStringLiteral("Pile: %1 of %2 cards").arg(dealt.left()).arg(m_hands->pile().total));
    DiscardLabel->setCaption(QStringLiteral("Discard: %1 cards").arg(dealt.discards().size()));
    for (rt::CommandButton* b : {DrawBtn, DiscardBtn})
        b->widget()->setEnabled(!dealt.hands().empty());
    showPictures();
    showNotes();
}

void DealForm::showPictures() {
    const qreal dpr = devicePixelRatioF();
    const auto show = [&](rt::PictureBox* box, const QString& name) {
        if (name.isEmpty()) {
            box->setPicture({}, {});
            return;
        }
        const QString path = imageDir() + QLatin1Char('/') + name;
        const QSize size(box->widget()->width(), box->widget()->height());
        QImage image = images::PreviewCache::instance().request(path, size * dpr);
        image.setDevicePixelRatio(dpr);
        box->setPicture(image, path);
    };
    show(PileImg, m_hands->dealt().left() > 0 ? m_content.back : QString());
    show(DiscardImg, m_hands->dealt().discards().empty() ? QString() : m_content.discard);
}

void DealForm::showNotes() {
    QStringList all = m_dealNotes;
    if (m_stale)
        all.append(QStringLiteral("The deck on the page has changed since this deal: Deal again "
                                  "to deal it."));
    for (const QString& note : m_oddsNotes)
        if (!all.contains(note))
            all.append(note);
    if (!m_action.isEmpty())
        all.append(m_action);
    Notes->setCaption(all.join(QLatin1Char('\n')));
}

void DealForm::resizeEvent(QResizeEvent* event) {
    rt::Form::resizeEvent(event);
    layoutControls();
}

// The hands and the odds take what the window gives; the pile keeps to the right.
void DealForm::layoutControls() {
    if (!odds)
        return;
    const int w = std::max(ScaleWidth(), 9600);
    const int h = std::max(ScaleHeight(), 7200);
    const int inner = w - 2 * Margin;
    deckLabel->setWidth(inner);
    hands->setWidth(inner - SideWidth - Margin);
    const int side = w - Margin - SideWidth;
    PileImg->setLeft(side);
    DiscardImg->setLeft(side + SideWidth - PictureW);
    PileLabel->setLeft(side);
    DiscardLabel->setLeft(side);
    Notes->setWidth(inner);
    CopyBtn->setLeft(w - Margin - CopyBtn->Width());
    odds->setWidth(inner);
    odds->setHeight(h - odds->Top() - Margin);
}

} // namespace deckview
