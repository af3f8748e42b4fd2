// Every form of the catalogue builds, with its texts at start, and its pages
// are laid out without overlaps or clipping at 96 and at 144 DPI.

#include "runtime/Form.h"
#include "runtime/Runtime.h"
#include "wizard/Catalogue.h"

#include <QWidget>
#include <gtest/gtest.h>
#include <memory>

using namespace rt;

namespace {

// Controls of one parent that the user sees side by side must not overlap.
void expectTidy(const Form& form) {
    const auto& all = form.controls();
    for (size_t i = 0; i < all.size(); ++i) {
        const auto& c = all[i];
        QWidget* w = c->widget();
        if (c->kind() == Kind::CommonDialog || c->baseName() == "helpLabel")
            continue;
        const QWidget* parent = w->parentWidget();
        const QRect inside = parent->rect();
        // The card dialog grows to show its property frame when the game has lists.
        const bool grows = c->baseName() == "propFrame";
        EXPECT_TRUE(grows || inside.contains(w->geometry()))
            << form.formName().toStdString() << "." << c->name().toStdString()
            << " sticks out of its parent";
        for (size_t j = i + 1; j < all.size(); ++j) {
            const auto& other = all[j];
            QWidget* o = other->widget();
            if (o == w || o->parentWidget() != parent || other->kind() == Kind::CommonDialog)
                continue;
            if (c->baseName() != "Wiz" && other->baseName() != "Wiz" &&
                c->baseName() != "helpLabel" && other->baseName() != "helpLabel") {
                // Controls that replace each other (CardDetailForm's Update
                // button and its hidden property frame) may share a place.
                if (c->baseName() == "propFrame" || other->baseName() == "propFrame")
                    continue;
                EXPECT_FALSE(w->geometry().intersects(o->geometry()))
                    << form.formName().toStdString() << ": " << c->name().toStdString()
                    << " overlaps " << other->name().toStdString();
            }
        }
    }
}

} // namespace

TEST(Catalogue, EveryFormBuildsWithItsTextsAtStart) {
    std::unique_ptr<Form> main(new Form(wizard::mainFormSpec()));
    EXPECT_EQ(main->Caption(), "Zavik Wizard - ver 1.0.1");
    EXPECT_EQ(main->ScaleWidth(), 9195);
    EXPECT_EQ(main->get<Frame>("Wiz", 6)->Caption(), "Properties && Reports");
    EXPECT_EQ(main->get<ComboBox>("DirName")->Text(), "Combo1");
    EXPECT_EQ(main->get<TextBox>("DealCrds")->Text(), "0");
    EXPECT_EQ(main->get<Label>("commLabel")->Caption(), "Cards: 0");
    EXPECT_EQ(main->get<Label>("PLlabel", 5)->Caption(), "Player #6");
    EXPECT_EQ(main->get<CommandButton>("ShowReport", 7)->Caption(), "Show Report #8");
    EXPECT_EQ(main->get<Label>("lbl", 27)->Caption(), "6");
    EXPECT_EQ(main->get<TextBox>("pName", 23)->Text(), "");
    EXPECT_EQ(main->get<ComboBox>("RepPropName")->List(2), "SELECTED");
    EXPECT_FALSE(main->get<CommandButton>("Command10")->Visible());
    EXPECT_EQ(main->get<Frame>("buttonFrame")->Left(), 3780);
    EXPECT_EQ(main->get<Label>("mainHelp")->Top(), 4560);
    // The numbered rows of the pages, each with its own number and hidden
    // until a count shows it.
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
        EXPECT_EQ(main->get<Label>("lbl", 4 + i)->Caption(), QString::number(i % 6 + 1))
            << i;
    main->get<Frame>("Wiz", 0)->setVisible(true);
    ASSERT_NE(main->firstTabControl(), nullptr);
    EXPECT_EQ(main->firstTabControl()->name(), "NameTXT");

    int forms = 0;
    for (const FormSpec* spec : allFormSpecs()) {
        std::unique_ptr<Form> form(new Form(*spec));
        for (const ControlSpec& c : spec->controls)
            EXPECT_NE(form->control(c.name, c.index), nullptr) << c.name.toStdString();
        ++forms;
    }
    EXPECT_EQ(forms, 8) << "the wizard's seven forms and the window of the whole-game check";
}

TEST(Catalogue, PagesAreTidyAtNinetySixAndHundredFortyFourDpi) {
    for (double tpp : {15.0, 10.0}) {
        setTwipsPerPixel(tpp);
        for (const FormSpec* spec : allFormSpecs()) {
            std::unique_ptr<Form> form(new Form(*spec));
            expectTidy(*form);
        }
    }
    setTwipsPerPixel(15);
}
