// The catalogue's forms as built: texts, tidy pages at 96 and 144 DPI, names and Tab order.

#include "runtime/Controls.h"
#include "runtime/Form.h"
#include "runtime/Runtime.h"
#include "wizard/Catalogue.h"

#include <QAccessible>
#include <QWidget>
#include <gtest/gtest.h>
#include <memory>

using namespace rt;

namespace {

QString spokenName(QWidget* w) {
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(w);
    return face ? face->text(QAccessible::Name) : QString();
}

bool reachable(const Control& c) {
    return (c.widget()->focusPolicy() & Qt::TabFocus) && c.kind() != Kind::Frame;
}

// Controls side by side must not overlap; help notes lie over a page on purpose, and the card
// dialog's property frame takes its Update button's place and grows when the game has lists.
void expectTidy(const Form& form) {
    const auto apart = [](const Control& c) {
        return c.kind() == Kind::CommonDialog || c.baseName() == "helpLabel";
    };
    const auto& all = form.controls();
    for (size_t i = 0; i < all.size(); ++i) {
        const Control& c = *all[i];
        QWidget* w = c.widget();
        if (apart(c))
            continue;
        EXPECT_TRUE(c.baseName() == "propFrame" ||
                    w->parentWidget()->rect().contains(w->geometry()))
            << form.formName() << "." << c.name() << " sticks out of its parent";
        if (c.baseName() == "Wiz" || c.baseName() == "propFrame")
            continue;
        for (size_t j = i + 1; j < all.size(); ++j) {
            const Control& other = *all[j];
            QWidget* o = other.widget();
            if (apart(other) || other.baseName() == "Wiz" || other.baseName() == "propFrame" ||
                o == w || o->parentWidget() != w->parentWidget())
                continue;
            EXPECT_FALSE(w->geometry().intersects(o->geometry()))
                << form.formName() << ": " << c.name() << " overlaps " << other.name();
        }
    }
}

TEST(Forms, EveryFormBuildsTidyAtNinetySixAndHundredFortyFourDpiWithANameOnEachStop) {
    EXPECT_EQ(allFormSpecs().size(), 13u) << "the wizard's seven forms, the window of the "
                                             "whole-game check, About, the deck sheet, the "
                                             "import preview, the deal and the unpack preview";
    for (double tpp : {15.0, 10.0}) {
        setTwipsPerPixel(tpp);
        for (const FormSpec* spec : allFormSpecs()) {
            const auto form = std::make_unique<Form>(*spec);
            expectTidy(*form);
            for (const ControlSpec& c : spec->controls)
                EXPECT_NE(form->control(c.name, c.index), nullptr) << c.name;
            for (const auto& c : form->controls())
                EXPECT_TRUE(!reachable(*c) || !spokenName(c->widget()).isEmpty())
                    << spec->name << "." << c->name();
        }
    }
    setTwipsPerPixel(15);
}

// Controls by the names the driver gives them, such as "PLname(3)".
class MainFormTest : public ::testing::Test {
protected:
    QString spoken(const QString& control) { return spokenName(named(control)->widget()); }
    const Control* named(const QString& control) {
        for (const auto& c : main->controls())
            if (c->name() == control)
                return c.get();
        ADD_FAILURE() << "no control " << control;
        return main->controls().front().get();
    }
    std::unique_ptr<Form> main = std::make_unique<Form>(wizard::mainFormSpec());
};

TEST_F(MainFormTest, BuildsWithItsTextsAtStart) {
    EXPECT_EQ(main->Caption(), "Zavik Wizard - ver 1.0.1");
    EXPECT_EQ(main->ScaleWidth(), 9195);
    EXPECT_EQ(main->get<Frame>("Wiz", 6)->Caption(), "Properties && Reports");
    EXPECT_EQ(main->get<ComboBox>("DirName")->Text(), "Combo1");
    EXPECT_EQ(main->get<TextBox>("DealCrds")->Text(), "0");
    EXPECT_EQ(main->get<Label>("commLabel")->Caption(), "Cards: 0");
    EXPECT_EQ(main->get<TextBox>("pName", 23)->Text(), "");
    EXPECT_EQ(main->get<ComboBox>("RepPropName")->List(2), "SELECTED");
    EXPECT_FALSE(main->get<CommandButton>("Command10")->Visible());
    EXPECT_EQ(main->get<Frame>("buttonFrame")->Left(), 3780);
    EXPECT_EQ(main->get<Label>("mainHelp")->Top(), 4560);
    // The numbered rows of the pages, hidden until a count shows them.
    for (int i = 0; i < 8; ++i) {
        const QString n = QString::number(i + 1);
        EXPECT_EQ(main->get<CommandButton>("ShowReport", i)->Caption(), "Show Report #" + n);
        EXPECT_FALSE(main->get<CommandButton>("ShowReport", i)->Visible());
        if (i >= 6)
            continue;
        EXPECT_EQ(main->get<Label>("PLlabel", i)->Caption(), "Player #" + n);
        EXPECT_EQ(main->get<CommandButton>("ShowPlayerDeck", i)->Caption(),
                  "Show PlayerDeck #" + n);
        EXPECT_EQ(main->get<CommandButton>("ShowCommonDeck", i)->Caption(),
                  "Show Common Deck #" + n);
        for (const char* row : {"PLlabel", "PLname", "PL_data", "ShowPlayerDeck", "ShowCommonDeck"})
            EXPECT_FALSE(main->control(row, i)->widget()->isVisibleTo(main.get())) << row << i;
    }
    for (int i = 0; i < 24; ++i) // four lists of six names, each row headed by its number
        EXPECT_EQ(main->get<Label>("lbl", 4 + i)->Caption(), QString::number(i % 6 + 1)) << i;
    main->get<Frame>("Wiz", 0)->setVisible(true);
    ASSERT_NE(main->firstTabControl(), nullptr);
    EXPECT_EQ(main->firstTabControl()->name(), "NameTXT");
}

TEST_F(MainFormTest, FieldsGoByTheirLabelsAndTabReadsEachPageLineByLine) {
    // clang-format off
    const std::pair<const char*, const char*> names[] = {
        {"NameTXT", "Name"}, {"descTxt", "Description"}, {"PLname(3)", "Player #4"},
        {"DealCrds", "Cards to deal"}, {"File1", "Images in the Game Directory"},
        {"backImg", "Back"}, {"discardImg", "Discard"}, {"repNum", "Number of Reports"},
        {"Wiz(6)", "Properties & Reports"}, {"commonList", "Cards: 0"}};
    // clang-format on
    for (const auto& [control, name] : names)
        EXPECT_EQ(spoken(control), name);
    // A label whose text changes renames its field.
    main->get<Label>("commLabel")->setCaption("Cards: 2 (tot: 4)");
    EXPECT_EQ(spoken("commonList"), "Cards: 2 (tot: 4)");
    main->get<CommandButton>("PL_data", 0)->setCaption("Player # 1 data (1 deck)");
    EXPECT_EQ(spoken("PL_data(0)"), "Player # 1 data (1 deck)");

    std::unique_ptr<Form> tree(new Form(wizard::treeFormSpec()));
    EXPECT_EQ(spokenName(tree->control("GameList")->widget()), "Game Tree");

    auto next = [&](const Control* from) -> const Control* {
        for (QWidget* w = from->widget()->nextInFocusChain(); w; w = w->nextInFocusChain())
            for (const auto& c : main->controls())
                if (c->widget() == w && reachable(*c))
                    return c.get();
        return nullptr;
    };
    // clang-format off
    const QStringList chains[] = {
        {"NameTXT", "Command10", "descTxt"}, {"DirName", "NewDirBtn"}, {"Command8", "Command5"},
        {"PlNum", "PLname(0)", "PL_data(0)", "PLname(1)"}, {"Command1", "Command6", "Command11"},
        {"DealCrds", "File1", "commonList", "Command3"}, {"PrevStep", "NextStep", "TreeBtn"}};
    // clang-format on
    for (const QStringList& chain : chains) {
        for (qsizetype i = 0; i + 1 < chain.size(); ++i) {
            const Control* n = next(named(chain[i]));
            EXPECT_EQ(n ? n->name() : QString(), chain[i + 1]) << "after " << chain[i];
        }
    }
    // Within any one page no stop lies above the one before it.
    for (const auto& c : main->controls()) {
        const Control* n = reachable(*c) ? next(c.get()) : nullptr;
        if (n && n->widget()->parentWidget() == c->widget()->parentWidget()) {
            EXPECT_GT(n->Top() + 180, c->Top()) << c->name() << " -> " << n->name();
        }
    }
}

} // namespace
