#include "decks/CardDetailForm.h"

#include "game/CardEntry.h"
#include "decks/ShowCrdForm.h"
#include "properties/PropertyLists.h"
#include "wizard/GamePath.h"
#include "store/ProfileStore.h"
#include "game/Conversions.h"
#include "wizard/Catalogue.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

#include <QAbstractItemView>

using namespace Globals;
using store::ReadProfileValue;
using conv::Val;
using conv::Trim;
using conv::GetField;

CardDetailForm::CardDetailForm() : rt::Form(wizard::cardDetailFormSpec()) {
    Label1 = get<rt::Label>(QStringLiteral("Label1"));
    CrdX = get<rt::TextBox>(QStringLiteral("CrdX"));
    Command2 = get<rt::CommandButton>(QStringLiteral("Command2"));
    Command1 = get<rt::CommandButton>(QStringLiteral("Command1"));
    propFrame = get<rt::Frame>(QStringLiteral("propFrame"));
    pListNames = get<rt::ComboBox>(QStringLiteral("pListNames"));
    for (int i = 0; i < 6; ++i) {
        lbl[i] = get<rt::Label>(QStringLiteral("lbl"), i);
        pName[i] = get<rt::TextBox>(QStringLiteral("pName"), i);
    }
    pListNames->Click = [this] { pListNames_Click(); };
    Command1->Click = [this] { Command1_Click(); };
    Command2->Click = [this] { Command2_Click(); };
}

int CardDetailForm::cardRow() const {
    const MainForm* main = mainForm();
    if (!main || m_slot < 0 || m_listEmptied)
        return -1;
    for (int i = 0; i < main->commonList->ListCount(); ++i)
        if (main->commonList->ItemData(i) == m_slot)
            return i;
    return -1;
}

QString CardDetailForm::cardProperties() const {
    return cardRow() >= 0 ? cardProp(m_slot) : QString();
}

void CardDetailForm::Form_Load() {
    const MainForm* main = mainForm();
    const int row = main ? main->commonList->ListIndex() : -1;
    if (row < 0)
        return;
    m_slot = main->commonList->ItemData(row);
    if (auto* view = qobject_cast<QAbstractItemView*>(main->commonList->widget()))
        QObject::connect(view->model(), &QAbstractItemModel::modelReset, this,
                         [this] { m_listEmptied = true; });

    const CardEntry card = readCardEntry(main->commonList->List(row));
    CrdX->setText(QString::number(card.count));
    Label1->setCaption(card.name);

    const QString file = GameFilePath();
    if (!(Val(ReadProfileValue(properties::Section, QStringLiteral("total"), file)) > 0))
        return;
    propFrame->setVisible(true);
    setHeight(4500);
    Command1->setTop(3780);
    pListNames->Clear();
    // Every list key with a name, whatever the total says.
    for (int i = 1; i <= properties::MaxLists; ++i) {
        const QString line = properties::listLine(i, file);
        if (!line.isEmpty())
            pListNames->AddItem(GetField(line, 1));
    }
    if (pListNames->ListCount() > 0)
        pListNames->setListIndex(0);
}

void CardDetailForm::pListNames_Click() {
    const QString file = GameFilePath();
    const QString props = cardProperties();
    const int lists = properties::listsToRead(properties::listTotal(file));
    // No break: of two lists of one name the later stays on screen.
    for (int i = 1; i <= lists; ++i) {
        const QString line = properties::listLine(i, file);
        if (GetField(line, 1) != pListNames->Text())
            continue;
        for (int j = 1; j <= properties::NamesPerList; ++j) {
            const QString name = GetField(line, static_cast<qint16>(j + 1));
            lbl[j - 1]->setCaption(name);
            pName[j - 1]->setText(QString());
            for (int k = 1; k <= properties::NamesPerList; ++k) {
                const QString pair = GetField(props, static_cast<qint16>(k), QStringLiteral("|"));
                if (GetField(pair, 1, QStringLiteral("=")) == name)
                    pName[j - 1]->setText(GetField(pair, 2, QStringLiteral("=")));
            }
        }
    }
}

void CardDetailForm::Command1_Click() {
    const int row = cardRow();
    MainForm* main = mainForm();
    if (row >= 0 && main) {
        // The prefix keeps the box's own text, not the number Val reads from it.
        const QString prefix = Val(CrdX->Text()) > 1
                                   ? QStringLiteral("(x") + Trim(CrdX->Text()) + QLatin1Char(')')
                                   : QString();
        main->commonList->setList(row, prefix + Label1->Caption());
        if (propFrame->Visible()) {
            // The slot holds the six boxes on screen and nothing else.
            QString text;
            for (int i = 0; i < properties::NamesPerList; ++i) {
                if (pName[i]->Text().isEmpty())
                    continue;
                if (!text.isEmpty())
                    text += QLatin1Char('|');
                text += lbl[i]->Caption() + QLatin1Char('=') + Trim(pName[i]->Text());
            }
            cardProp(m_slot) = text;
        }
    }
    Unload();
}

void CardDetailForm::Command2_Click() {
    // The card selected at the press, which may no longer be the one the
    // dialog stands for; with nothing selected, the dialog's own card.
    const MainForm* main = mainForm();
    const int row = main ? main->commonList->ListIndex() : -1;
    showCardImage(row >= 0 ? readCardEntry(main->commonList->List(row)).name : Label1->Caption(),
                  false);
}

void CardDetailForm::Form_KeyPress(int& KeyAscii) {
    if (KeyAscii == 27) {
        KeyAscii = 0;
        Unload();
    } else if (KeyAscii == 13) {
        // Enter presses the default button, or the button that has the focus.
        KeyAscii = 0;
        if (activeControl() == Command2)
            Command2_Click();
        else
            Command1_Click();
    }
}
